#pragma once

#include "archive/ArchiveError.h"
#include "archive/KeyedArchive.h"

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace kestrel {

// GoogleTest finds it beside the type.
inline void PrintTo(ArchiveError::Kind kind, std::ostream* stream)
{
    *stream << "kind " << static_cast<int>(kind);
}

} // namespace kestrel

namespace kestrel::test {

using Kind = ArchiveError::Kind;
using kestrel::viewOf;

[[nodiscard]] inline ByteView viewOf(std::string_view text)
{
    return { reinterpret_cast<const std::uint8_t*>(text.data()), text.size() };
}

// Why the bytes are refused as an archive; missing when they are accepted.
[[nodiscard]] inline std::optional<Kind> refusal(ByteView archive)
{
    try {
        (void)KeyedArchive::unarchivedRoot(archive);
        return std::nullopt;
    } catch (const ArchiveError& error) {
        return error.kind();
    }
}

[[nodiscard]] inline std::optional<Kind> refusal(std::string_view archive)
{
    return refusal(viewOf(archive));
}

// An XML list, and an XML archive with these objects after the one for nothing.
[[nodiscard]] inline std::string xmlList(std::string_view root)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">"
        + std::string(root) + "</plist>\n";
}

[[nodiscard]] inline std::string xmlUid(int uid)
{
    return "<dict><key>CF$UID</key><integer>" + std::to_string(uid) + "</integer></dict>";
}

[[nodiscard]] inline std::string xmlClass(std::string_view name)
{
    return "<dict><key>$classname</key><string>" + std::string(name)
        + "</string><key>$classes</key><array><string>" + std::string(name)
        + "</string><string>NSObject</string></array></dict>";
}

[[nodiscard]] inline std::string xmlArchive(std::string_view objects, int root = 1)
{
    return xmlList("<dict><key>$version</key><integer>100000</integer>"
                   "<key>$archiver</key><string>NSKeyedArchiver</string>"
                   "<key>$top</key><dict><key>root</key>"
        + xmlUid(root) + "</dict><key>$objects</key><array><string>$null</string>"
        + std::string(objects) + "</array></dict>");
}

} // namespace kestrel::test
