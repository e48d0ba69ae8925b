// Data, dictionaries, URLs and the other objects of Core Foundation.
#include "platform/macos/CFHolder.h"
#include "tests/platform/macos/stand-ins/CFString.h"

#include <cstdlib>
#include <vector>

namespace kestrel::test {
namespace {

class CFData final : public CFObject {
public:
    explicit CFData(std::vector<UInt8> bytes)
        : CFObject(Data)
        , bytes(std::move(bytes))
    {
    }
    [[nodiscard]] bool equals(const CFObject& other) const override
    {
        return other.type() == Data && dynamic_cast<const CFData&>(other).bytes == bytes;
    }

    const std::vector<UInt8> bytes;
};

class CFDictionary final : public CFObject {
public:
    CFDictionary()
        : CFObject(Dictionary)
    {
    }

    std::vector<std::pair<CFHolder<CFTypeRef>, CFHolder<CFTypeRef>>> entries;
};

class CFUrl final : public CFObject {
public:
    explicit CFUrl(CFStringRef text)
        : CFObject(Url)
        , text(CFHolder<CFStringRef>::retained(text))
    {
    }

    const CFHolder<CFStringRef> text;
};

CFObject booleanTrue(CFObject::Boolean);

} // namespace
} // namespace kestrel::test

using kestrel::CFHolder;
using kestrel::test::CFData;
using kestrel::test::CFDictionary;
using kestrel::test::CFObject;
using kestrel::test::CFUrl;

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = kestrel::test::booleanTrue.as<CFBooleanRef>();
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks {};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks {};

CFTypeID CFDataGetTypeID()
{
    return CFObject::Data;
}

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length)
{
    return (new CFData(std::vector<UInt8>(bytes, bytes + length)))->as<CFDataRef>();
}

CFIndex CFDataGetLength(CFDataRef data)
{
    return static_cast<CFIndex>(CFObject::of<CFData>(data).bytes.size());
}

const UInt8* CFDataGetBytePtr(CFDataRef data)
{
    return CFObject::of<CFData>(data).bytes.data();
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values,
    CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
    const CFDictionaryValueCallBacks* valueCallBacks)
{
    // Without these callbacks the dictionary would not retain its objects.
    if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks
        || valueCallBacks != &kCFTypeDictionaryValueCallBacks)
        std::abort();
    auto* const dictionary = new CFDictionary;
    for (CFIndex i = 0; i < count; ++i)
        dictionary->entries.emplace_back(
            CFHolder<CFTypeRef>::retained(keys[i]), CFHolder<CFTypeRef>::retained(values[i]));
    return dictionary->as<CFDictionaryRef>();
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key)
{
    for (const auto& [each, value] : CFObject::of<CFDictionary>(dictionary).entries) {
        if (CFEqual(each.get(), key))
            return value.get();
    }
    return nullptr;
}

CFURLRef CFURLCreateWithString(CFAllocatorRef, CFStringRef text, CFURLRef)
{
    return (new CFUrl(text))->as<CFURLRef>();
}

CFStringRef CFURLGetString(CFURLRef url)
{
    return CFObject::of<CFUrl>(url).text.get();
}
