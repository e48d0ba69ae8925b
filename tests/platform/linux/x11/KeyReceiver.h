#pragma once

#include "tests/platform/linux/x11/XClient.h"

namespace kestrel::test {

// The window of another application. It records the key events that it receives.
class KeyReceiver : public XClient {
public:
    enum class Map { No, Yes };

    // `applicationClass` is the class part of WM_CLASS; its instance part differs from it.
    KeyReceiver(const std::string& display, std::string_view applicationClass, Map map = Map::Yes);

    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] const std::string& applicationClass() const { return m_applicationClass; }
    void map();
    // True if the window manager manages the window.
    [[nodiscard]] bool isManaged() const;
    [[nodiscard]] bool isActive() const;
    // Asks the window manager to activate the window, as a task bar does.
    void activate() const;
    // Takes the focus without asking the window manager.
    void takeFocus() const;
    [[nodiscard]] bool hasFocus() const;
    // Every key event since the last call, such as "Super down; S down Super; Super up Super".
    std::string keys();
    // The key presses among the events that keys() has returned last.
    [[nodiscard]] const std::vector<xcb_key_press_event_t>& presses() const { return m_presses; }
    // The server's times of the key events that keys() has returned last.
    [[nodiscard]] const std::vector<xcb_timestamp_t>& times() const { return m_times; }

private:
    std::string m_applicationClass;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    std::vector<xcb_key_press_event_t> m_presses;
    std::vector<xcb_timestamp_t> m_times;
};

} // namespace kestrel::test
