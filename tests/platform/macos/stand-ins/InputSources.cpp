#include "tests/platform/macos/stand-ins/InputSources.h"

#include "platform/macos/CFHolder.h"
#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Calls.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace kestrel::test {
namespace {

constexpr OSStatus ParameterError = -50;
constexpr UInt32 ShiftBit = 2;

using Bytes = std::array<UInt8, sizeof(UInt32)>;

class SourceObject final : public CFObject {
public:
    explicit SourceObject(const InputSources::Source& source)
        : CFObject(InputSource)
    {
        if (!source.layout)
            return;
        auto& known = inputSources().known;
        const auto number = static_cast<UInt32>(known.size());
        known[number] = *source.layout;
        Bytes bytes;
        std::memcpy(bytes.data(), &number, bytes.size());
        data = CFHolder(CFDataCreate(kCFAllocatorDefault, bytes.data(), bytes.size()));
    }

    CFHolder<CFDataRef> data;
};

TISInputSourceRef copyOf(const std::optional<InputSources::Source>& source)
{
    return source ? (new SourceObject(*source))->as<TISInputSourceRef>() : nullptr;
}

UInt16 placeOnAnsiKeyboard(UInt16 key, UInt32 keyboardType)
{
    if (keyboardType == InputSources::Iso && (key == 10 || key == 50))
        return key == 10 ? 50 : 10;
    return key;
}

// Changes the dead-key state as macOS does.
std::u16string typed(const LayoutKey& key, UInt32 modifiers, OptionBits options, UInt32& deadKey)
{
    const bool hasShift = (modifiers & ShiftBit) != 0;
    std::u16string text = hasShift ? key.withShift : key.plain;
    if (key.isDead && !hasShift && (options & kUCKeyTranslateNoDeadKeysMask) == 0) {
        deadKey = text.at(0);
        return {};
    }
    if (const auto accent = static_cast<char16_t>(std::exchange(deadKey, 0)); accent != 0)
        return accent + text;
    return text;
}

} // namespace

InputSources& inputSources()
{
    static InputSources sources;
    return sources;
}

} // namespace kestrel::test

using kestrel::test::calls;
using kestrel::test::CFObject;
using kestrel::test::inputSources;

const CFStringRef kTISPropertyUnicodeKeyLayoutData = CFSTR("TISPropertyUnicodeKeyLayoutData");

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource()
{
    return kestrel::test::copyOf(inputSources().current);
}

TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource()
{
    return kestrel::test::copyOf(inputSources().asciiCapable);
}

void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef property)
{
    const auto& object = CFObject::of<kestrel::test::SourceObject>(source);
    if (!CFEqual(property, kTISPropertyUnicodeKeyLayoutData))
        return nullptr;
    return const_cast<void*>(static_cast<CFTypeRef>(object.data.get()));
}

UInt8 LMGetKbdType()
{
    return inputSources().keyboardType;
}

OSStatus UCKeyTranslate(const UCKeyboardLayout* layout, UInt16 key, UInt16 action, UInt32 modifiers,
    UInt32 keyboardType, OptionBits options, UInt32* deadKeyState, UniCharCount room,
    UniCharCount* length, UniChar text[])
{
    UInt32 number = 0;
    std::memcpy(&number, layout, sizeof number);
    const auto& keys = inputSources().known.at(number).keys;
    if (action != kUCKeyActionDown || (modifiers & ~kestrel::test::ShiftBit) != 0)
        std::abort(); // the layouts of the tests say nothing about these
    *length = 1; // macOS promises nothing about these after a failure
    text[0] = u'?';
    if (calls().fail("UCKeyTranslate"))
        return kestrel::test::ParameterError;
    const auto found = keys.find(kestrel::test::placeOnAnsiKeyboard(key, keyboardType));
    const std::u16string typed = found == keys.end()
        ? std::u16string()
        : kestrel::test::typed(found->second, modifiers, options, *deadKeyState);
    if (typed.size() > room)
        return kestrel::test::ParameterError;
    *length = typed.size();
    std::copy(typed.begin(), typed.end(), text);
    return noErr;
}
