#include "platform/linux/x11/X11KeyTranslation.h"

#include "platform/linux/x11/EvdevKeyMap.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <limits>

namespace kestrel {

namespace {

constexpr std::uint32_t EvdevOffset = 8; // an X keycode is the evdev code plus this

// Modifier bits in the state of an X key event. Every common keyboard description has Alt on Mod1
// and Super on Mod4.
struct StateBit {
    std::uint32_t state;
    ModifierFlags flag;
};
constexpr std::array StateBits {
    StateBit { 1u << 0, Modifier::Shift }, StateBit { 1u << 1, Modifier::CapsLock },
    StateBit { 1u << 2, Modifier::Control }, StateBit { 1u << 3, Modifier::Option }, // Mod1
    StateBit { 1u << 6, Modifier::Command }, // Mod4
};

// Every keyboard event of macOS carries this bit. Without it, a stored plain A (no flags, key code
// 0) would look like an unused record.
constexpr ModifierFlags NonCoalesced = 0x100;

// The codes from 54 (right Command) to 63 (FN) are keys that only change the modifiers.
constexpr bool isModifierKey(KeyCode keyCode)
{
    return keyCode >= 54 && keyCode <= 63;
}

bool isControlCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

// Prefers the keysym to the event's text: Shift changes the keysym, but Control, Alt and Super,
// which may change the text, do not.
std::string characters(const NativeKeyEvent& event)
{
    std::array<char, 8> utf8 {};
    const int size = xkb_keysym_to_utf8(event.virtualKey, utf8.data(), utf8.size());
    std::string text = size > 1 ? std::string(utf8.data()) : std::string(event.text);
    if (std::any_of(text.begin(), text.end(), isControlCharacter))
        return {};
    return text;
}

} // namespace

std::optional<TranslatedKey> X11KeyTranslation::translate(const NativeKeyEvent& event)
{
    constexpr auto LargestCode = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
    if (event.scanCode < EvdevOffset || event.scanCode > LargestCode)
        return std::nullopt;
    const auto keyCode = EvdevKeyMap::keyCode(static_cast<int>(event.scanCode - EvdevOffset));
    if (!keyCode || isModifierKey(*keyCode))
        return std::nullopt;
    ModifierFlags flags = NonCoalesced;
    for (const auto& [state, flag] : StateBits)
        flags |= event.modifiers & state ? flag : 0;
    return TranslatedKey { *keyCode, flags, characters(event) };
}

} // namespace kestrel
