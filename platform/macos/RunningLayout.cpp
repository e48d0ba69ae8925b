#include "platform/RunningLayout.h"

#include "platform/macos/CFText.h"

#include <Carbon/Carbon.h>

#include <array>

namespace kestrel {

namespace {
constexpr std::size_t LongestText = 255; // UTF-16 units that one key can type
constexpr UInt32 Shift = shiftKey >> 8; // as UCKeyTranslate takes modifiers

using InputSource = CFHolder<TISInputSourceRef>;
using LayoutData = CFHolder<CFDataRef>;

// Empty if there is no such source, or if it has no layout of Unicode characters.
LayoutData dataOf(const InputSource& source)
{
    if (!source)
        return {};
    return LayoutData::retained(static_cast<CFDataRef>(
        TISGetInputSourceProperty(source.get(), kTISPropertyUnicodeKeyLayoutData)));
}

bool isControlCharacter(UniChar unit)
{
    return unit < 0x20 || unit == 0x7F;
}

class CarbonRunningLayout final : public RunningLayout {
public:
    explicit CarbonRunningLayout(LayoutData data)
        : m_data(std::move(data))
    {
    }

    [[nodiscard]] std::optional<Characters> charactersOf(KeyCode key) override
    {
        auto plain = typed(key, 0);
        if (!plain)
            return {};
        return Characters { *std::move(plain), typed(key, Shift).value_or(std::string()) };
    }

private:
    // A dead key types its accent. Empty for a key that types a control character, as function keys
    // do. No value for a key that the layout does not have.
    [[nodiscard]] std::optional<std::string> typed(KeyCode key, UInt32 modifiers) const
    {
        std::array<UniChar, LongestText> text {};
        UniCharCount length = 0;
        UInt32 deadKeyState = 0;
        const auto* const layout
            = reinterpret_cast<const UCKeyboardLayout*>(CFDataGetBytePtr(m_data.get()));
        if (UCKeyTranslate(layout, key, kUCKeyActionDown, modifiers, LMGetKbdType(),
                kUCKeyTranslateNoDeadKeysMask, &deadKeyState, text.size(), &length, text.data())
                != noErr
            || length == 0)
            return {};
        if (length == 1 && isControlCharacter(text[0]))
            return std::string();
        const CFHolder string(CFStringCreateWithCharacters(
            kCFAllocatorDefault, text.data(), static_cast<CFIndex>(length)));
        return CFText::toUtf8(string.get());
    }

    const LayoutData m_data;
};
} // namespace

// While the user types with an input method whose layout has no data, the layout for Latin text
// is asked, which is the one that shortcuts go by.
std::unique_ptr<RunningLayout> runningLayout()
{
    auto data = dataOf(InputSource(TISCopyCurrentKeyboardLayoutInputSource()));
    if (!data)
        data = dataOf(InputSource(TISCopyCurrentASCIICapableKeyboardLayoutInputSource()));
    return data ? std::make_unique<CarbonRunningLayout>(std::move(data)) : nullptr;
}

} // namespace kestrel
