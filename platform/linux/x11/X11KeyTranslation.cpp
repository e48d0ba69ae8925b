#include "platform/linux/x11/X11KeyTranslation.h"

#include "platform/linux/x11/EvdevKeyMap.h"
#include "platform/linux/x11/KeysymCharacters.h"
#include "platform/linux/x11/ShiftedKeysym.h"

#include <array>
#include <limits>

namespace kestrel {

namespace {

constexpr std::uint32_t LargestXKeyCode = 255;

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

} // namespace

X11KeyTranslation::X11KeyTranslation(std::shared_ptr<X11Session> session)
    : m_session(std::move(session))
{
}

std::optional<TranslatedKey> X11KeyTranslation::translate(const NativeKeyEvent& event)
{
    constexpr auto LargestCode = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
    if (event.scanCode < std::uint32_t { EvdevKeyMap::XOffset } || event.scanCode > LargestCode)
        return std::nullopt;
    const auto keyCode
        = EvdevKeyMap::keyCode(static_cast<int>(event.scanCode) - EvdevKeyMap::XOffset);
    if (!keyCode || isModifierKey(*keyCode))
        return std::nullopt;
    ModifierFlags flags = NonCoalesced;
    for (const auto& [state, flag] : StateBits)
        flags |= event.modifiers & state ? flag : 0;
    return TranslatedKey { *keyCode, flags, charactersIgnoringModifiers(event) };
}

// The keysym of the event is that of all its modifiers: with AltGr, a German Q has an @. The
// keystroke that is posted later has no AltGr and types a Q.
std::string X11KeyTranslation::charactersIgnoringModifiers(const NativeKeyEvent& event)
{
    const auto keysym = event.scanCode <= LargestXKeyCode
        ? keysymWithShiftAlone(m_session->connection, static_cast<xcb_keycode_t>(event.scanCode),
            static_cast<std::uint16_t>(event.modifiers))
        : std::nullopt;
    return charactersOfKeysym(keysym.value_or(event.virtualKey));
}

} // namespace kestrel
