#include "platform/macos/CFText.h"

namespace kestrel::CFText {

CFHolder<CFStringRef> fromUtf8(std::string_view text)
{
    return CFHolder(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
            static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

std::optional<std::string> toUtf8(CFStringRef text)
{
    const CFRange whole = CFRangeMake(0, CFStringGetLength(text));
    CFIndex size = 0;
    if (CFStringGetBytes(text, whole, kCFStringEncodingUTF8, 0, false, nullptr, 0, &size)
        != whole.length)
        return std::nullopt;
    std::string utf8(static_cast<std::size_t>(size), '\0');
    CFStringGetBytes(text, whole, kCFStringEncodingUTF8, 0, false,
        reinterpret_cast<UInt8*>(utf8.data()), size, nullptr);
    return utf8;
}

} // namespace kestrel::CFText
