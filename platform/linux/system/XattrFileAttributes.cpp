#include "platform/linux/system/XattrFileAttributes.h"

#include <sys/xattr.h>

#include <array>
#include <string>

namespace kestrel {

namespace {
constexpr const char* FinderInfo = "user.com.apple.FinderInfo";

// The type, then the creator, both with the high byte first; then what is none of our business.
using Info = std::array<std::uint8_t, 32>;

std::uint32_t codeAt(const Info& info, std::size_t offset)
{
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i)
        code = code << 8 | info[offset + i];
    return code;
}

void putCodeAt(Info& info, std::size_t offset, std::uint32_t code)
{
    for (std::size_t i = 0; i < 4; ++i)
        info[offset + i] = static_cast<std::uint8_t>(code >> (24 - 8 * i));
}

std::optional<Info> readInfo(const std::string& path)
{
    Info info {};
    if (::getxattr(path.c_str(), FinderInfo, info.data(), info.size())
        != static_cast<ssize_t>(info.size()))
        return {};
    return info;
}
} // namespace

bool XattrFileAttributes::setCodes(std::string_view path, FileCodes codes)
{
    const std::string name(path);
    Info info = readInfo(name).value_or(Info {});
    putCodeAt(info, 0, codes.type);
    putCodeAt(info, 4, codes.creator);
    return ::setxattr(name.c_str(), FinderInfo, info.data(), info.size(), 0) == 0;
}

std::optional<FileCodes> XattrFileAttributes::codes(std::string_view path)
{
    const auto info = readInfo(std::string(path));
    if (!info)
        return {};
    return FileCodes { codeAt(*info, 0), codeAt(*info, 4) };
}

} // namespace kestrel
