#include "platform/IdleLoop.h"
#include "platform/RunningLayout.h"
#include "platform/linux/x11/EvdevKeyMap.h"
#include "platform/linux/x11/KeysymCharacters.h"
#include "platform/linux/x11/ShiftedKeysym.h"
#include "platform/linux/x11/X11Connection.h"

namespace kestrel {

namespace {
constexpr int LargestXKeyCode = 255;
constexpr unsigned GroupShift = 13; // in the state of a key event

class X11RunningLayout final : public RunningLayout {
public:
    // False if the server does not answer.
    [[nodiscard]] bool isThere()
    {
        const auto group = groupInUse(m_connection);
        m_state = static_cast<std::uint16_t>(group.value_or(0) << GroupShift);
        return group.has_value();
    }

    [[nodiscard]] std::optional<Characters> charactersOf(KeyCode key) override
    {
        const auto evdev = EvdevKeyMap::evdevCode(key);
        if (!evdev || *evdev + EvdevKeyMap::XOffset > LargestXKeyCode)
            return {};
        const auto keycode = static_cast<xcb_keycode_t>(*evdev + EvdevKeyMap::XOffset);
        const auto plain = keysymWithShiftAlone(m_connection, keycode, m_state);
        const auto shifted = keysymWithShiftAlone(
            m_connection, keycode, static_cast<std::uint16_t>(m_state | XCB_MOD_MASK_SHIFT));
        if (plain.value_or(XCB_NO_SYMBOL) == XCB_NO_SYMBOL)
            return {};
        return Characters { charactersOfKeysym(*plain),
            charactersOfKeysym(shifted.value_or(XCB_NO_SYMBOL)) };
    }

private:
    IdleLoop m_loop;
    X11Connection m_connection { m_loop };
    std::uint16_t m_state = 0; // of a key event without modifiers
};
} // namespace

std::unique_ptr<RunningLayout> runningLayout()
{
    auto layout = std::make_unique<X11RunningLayout>();
    return layout->isThere() ? std::move(layout) : nullptr;
}

} // namespace kestrel
