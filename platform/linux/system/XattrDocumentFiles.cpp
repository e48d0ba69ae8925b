#include "platform/linux/system/XattrDocumentFiles.h"

#include "archive/AtomicFile.h"

#include <sys/xattr.h>

#include <array>
#include <string>

namespace kestrel {

namespace {
using FinderInfo = std::array<std::uint8_t, 32>;
constexpr std::size_t TypeOffset = 0;
constexpr std::size_t CreatorOffset = 4;

// No value when the file has no such attribute, or one of another size.
std::optional<FinderInfo> read(const std::string& path)
{
    FinderInfo info {};
    const ssize_t size
        = ::getxattr(path.c_str(), XattrDocumentFiles::AttributeName, info.data(), info.size());
    if (size != static_cast<ssize_t>(info.size()))
        return {};
    return info;
}

std::uint32_t code(const FinderInfo& info, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < 4; ++index)
        value = value << 8 | info[offset + index];
    return value;
}

void setCode(FinderInfo& info, std::size_t offset, std::uint32_t value)
{
    for (std::size_t index = 0; index < 4; ++index)
        info[offset + index] = static_cast<std::uint8_t>(value >> (24 - 8 * index));
}
} // namespace

std::string XattrDocumentFiles::replace(
    std::string_view path, std::span<const std::uint8_t> content)
{
    const auto file = QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
    return AtomicFile::write(file, content).problem.toStdString();
}

bool XattrDocumentFiles::setCodes(std::string_view path, FileCodes codes)
{
    const std::string file(path);
    FinderInfo info = read(file).value_or(FinderInfo {});
    setCode(info, TypeOffset, codes.type);
    setCode(info, CreatorOffset, codes.creator);
    return ::setxattr(file.c_str(), AttributeName, info.data(), info.size(), 0) == 0;
}

std::optional<FileCodes> XattrDocumentFiles::codes(std::string_view path)
{
    const auto info = read(std::string(path));
    if (!info)
        return {};
    return FileCodes { code(*info, TypeOffset), code(*info, CreatorOffset) };
}

} // namespace kestrel
