#pragma once

#include "platform/linux/x11/KeyLedger.h"
#include "platform/linux/x11/X11Connection.h"

#include <xcb/xinput.h>

#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace kestrel {

// The keyboards that feed the user's keyboard focus: the server's XTEST keyboard, through which we
// post, and the user's own. Keeps XTEST's from repeating keys by itself for as long as we are
// connected, and knows which modifier keys the user holds on the others. Main thread only.
class X11Keyboards final : private X11Connection::Listener {
public:
    // `userModifiersChanged` runs when the user has pressed or let go of a modifier key.
    X11Keyboards(
        X11Connection& connection, std::function<void(const XKeySet&)> userModifiersChanged);
    ~X11Keyboards(); // the repeat setting comes back with the end of the connection

    // Every key that is down, or may be, on the user's keyboards; asks the server nothing.
    [[nodiscard]] XKeySet keysOfUser() const;

    // Keys that are down on the XTEST keyboard, whoever pressed them; waits for the server. Missing
    // when it cannot say.
    [[nodiscard]] std::optional<XKeySet> keysDownOnXTest();

    // Makes the server look at a keyboard of the user's again: until then what it does with held
    // keys follows the keyboard that was used last. Nobody sees an event of it.
    void turnToUserKeyboard();

private:
    using DeviceId = xcb_input_device_id_t;
    struct Keyboard {
        XKeySet down; // or may be
        XKeySet modifiers; // those among them that are modifier keys
    };

    void connectionOpened() override;
    void connectionLost() override;
    void eventArrived(const xcb_generic_event_t& event) override;

    void inputEventArrived(const xcb_ge_generic_event_t& event);
    void xkbEventArrived(const xcb_generic_event_t& event);
    void beginExtensions();
    void findDevices();
    [[nodiscard]] std::optional<DeviceId> coreKeyboard();
    void keepFromRepeating();
    void selectInputEvents(DeviceId device, std::uint32_t mask);
    void followModifiers(DeviceId device);
    void tellModifiers() const;
    [[nodiscard]] std::optional<XKeySet> keysDown(DeviceId device);
    [[nodiscard]] const XKeySet& modifierKeys();

    X11Connection& m_connection;
    std::function<void(const XKeySet&)> m_userModifiersChanged;
    std::uint8_t m_xkbEvent = 0;
    std::uint8_t m_inputOpcode = 0;
    std::uint8_t m_inputEvent = 0;
    std::optional<DeviceId> m_xtest;
    std::map<DeviceId, Keyboard> m_userKeyboards;
    bool m_knowsUserKeyboards = false;
    std::optional<XKeySet> m_modifierKeys; // missing until asked for since the layout changed
};

} // namespace kestrel
