#include "tests/platform/macos/stand-ins/CFString.h"

#include <iconv.h>

#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace kestrel::test {

bool CFString::equals(const CFObject& other) const
{
    return other.type() == String && dynamic_cast<const CFString&>(other).m_text == m_text;
}

namespace {
struct Converted {
    std::vector<char> bytes;
    std::size_t taken; // bytes of the input up to the first that has no such form
};

Converted convert(const char* from, const char* to, const char* bytes, std::size_t count)
{
    std::vector<char> input(bytes, bytes + count);
    std::vector<char> output(4 * count + 4);
    char* next = input.data();
    char* end = output.data();
    std::size_t left = count;
    std::size_t room = output.size();
    const iconv_t converter = iconv_open(to, from);
    iconv(converter, &next, &left, &end, &room);
    iconv_close(converter);
    output.resize(output.size() - room);
    return { std::move(output), count - left };
}

std::optional<std::u16string> fromUtf8(const char* bytes, std::size_t count)
{
    const Converted converted = convert("UTF-8", "UTF-16LE", bytes, count);
    if (converted.taken != count)
        return std::nullopt;
    std::u16string text(converted.bytes.size() / 2, u'\0');
    if (!text.empty())
        std::memcpy(text.data(), converted.bytes.data(), converted.bytes.size());
    return text;
}
} // namespace

} // namespace kestrel::test

using kestrel::test::CFString;

extern "C" CFStringRef kestrelConstantString(const char* text)
{
    static std::mutex mutex;
    static auto& strings
        = *new std::map<std::string, CFStringRef>; // they live as long as the program
    const std::scoped_lock lock(mutex);
    CFStringRef& string = strings[text];
    if (!string)
        string = CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(text),
            static_cast<CFIndex>(std::strlen(text)), kCFStringEncodingUTF8, false);
    return string;
}

CFStringRef CFStringCreateWithBytes(
    CFAllocatorRef, const UInt8* bytes, CFIndex count, CFStringEncoding, Boolean)
{
    auto text = kestrel::test::fromUtf8(
        reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    return text ? (new CFString(std::move(*text)))->as<CFStringRef>() : nullptr;
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UInt16* characters, CFIndex count)
{
    return (new CFString(std::u16string(characters, characters + count)))->as<CFStringRef>();
}

CFIndex CFStringGetLength(CFStringRef text)
{
    return static_cast<CFIndex>(CFString::textOf(text).size());
}

CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding, UInt8, Boolean,
    UInt8* buffer, CFIndex size, CFIndex* used)
{
    const auto part = CFString::textOf(text).substr(
        static_cast<std::size_t>(range.location), static_cast<std::size_t>(range.length));
    const auto converted = kestrel::test::convert(
        "UTF-16LE", "UTF-8", reinterpret_cast<const char*>(part.data()), 2 * part.size());
    const std::vector<char>& bytes = converted.bytes;
    if (used)
        *used = static_cast<CFIndex>(bytes.size());
    if (buffer && static_cast<CFIndex>(bytes.size()) > size)
        return 0; // this stand-in writes all or nothing
    if (buffer && !bytes.empty())
        std::memcpy(buffer, bytes.data(), bytes.size());
    return static_cast<CFIndex>(converted.taken / 2);
}
