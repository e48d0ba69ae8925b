#pragma once

#include "platform/linux/x11/KeyLedger.h"
#include "platform/linux/x11/KeyboardDevices.h"
#include "platform/linux/x11/X11Connection.h"

#include <functional>
#include <map>
#include <optional>

namespace kestrel {

// The keyboards that feed the user's keyboard focus: the X server's XTEST keyboard, through which
// we post, and the user's own keyboards. Keeps the XTEST keyboard from repeating or swallowing keys
// for as long as we are connected, and knows which keys the user holds on the others. Main thread
// only.
class X11Keyboards final : private X11Connection::Listener {
public:
    // A modifier key of the XTEST keyboard has gone down or up, through us or through another
    // program.
    struct XTestModifier {
        XKeyCode key;
        bool isDown;
        bool noneIsDown; // no modifier key of the XTEST keyboard
        unsigned sequence; // number of our last request that the server had handled by then
    };

    // `userModifiersChanged` runs when the user has pressed or released a modifier key.
    X11Keyboards(X11Connection& connection,
        std::function<void(const XKeySet&)> userModifiersChanged,
        std::function<void(const XTestModifier&)> xtestModifierChanged);
    ~X11Keyboards(); // the server restores its controls when the connection ends

    // The keys that are down, or may be down, on the user's keyboards. Does not ask the server.
    [[nodiscard]] const XKeySet& keysOfUser() const { return m_keysOfUser; }

    // The keys that are down on the XTEST keyboard, including those that other programs pressed.
    // Waits for the server. No value when the server cannot tell.
    [[nodiscard]] std::optional<XKeySet> keysDownOnXTest();

    // Makes one of the user's keyboards the server's current keyboard again. The server treats held
    // keys by the settings of the keyboard that was used last. Clients that select no raw events
    // see nothing of this.
    void turnToUserKeyboard();

private:
    using DeviceId = KeyboardDevices::Id;
    struct Keyboard {
        XKeySet down; // keys that are down or may be down
        XKeySet modifiers; // the modifier keys that are down
    };

    void connectionOpened() override;
    void connectionLost() override;
    void eventArrived(const xcb_generic_event_t& event) override;

    void inputEventArrived(const xcb_ge_generic_event_t& event);
    void keyEventArrived(const xcb_input_raw_key_press_event_t& event);
    void xkbEventArrived(const xcb_generic_event_t& event);
    void modifiersChanged(const xcb_generic_event_t& event);
    void controlsChanged(const xcb_generic_event_t& event);
    void userControlsChanged(std::uint32_t changed, std::uint32_t enabled);
    void beginExtensions();
    void findDevices();
    void switchControlsOff();
    void selectInputEvents(DeviceId device, std::uint32_t mask);
    void followKeys(DeviceId device);
    void followModifiers(DeviceId device);
    void gatherKeysOfUser();
    void tellModifiers() const;
    [[nodiscard]] XKeySet modifiersDown(DeviceId device);
    [[nodiscard]] const XKeySet& modifierKeys();

    X11Connection& m_connection;
    std::function<void(const XKeySet&)> m_userModifiersChanged;
    std::function<void(const XTestModifier&)> m_xtestModifierChanged;
    std::uint8_t m_xkbEvent = 0;
    std::uint8_t m_inputOpcode = 0;
    std::uint8_t m_inputEvent = 0;
    std::optional<DeviceId> m_xtest;
    std::uint32_t m_leftOff = 0; // controls that XTestControls::leaveOff() has returned
    std::map<DeviceId, Keyboard> m_userKeyboards;
    XKeySet m_keysOfUser = XKeySet().set(); // all while the keyboards are unknown
    // No value until it is needed after a change of the layout.
    std::optional<XKeySet> m_modifierKeys;
};

} // namespace kestrel
