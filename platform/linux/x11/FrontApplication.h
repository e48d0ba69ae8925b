#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <functional>
#include <optional>
#include <string>

namespace kestrel {

// Which application is frontmost: the class of the window in _NET_ACTIVE_WINDOW, else of the one
// that has the input focus. Kept current from the server's notifications, so that asking it asks
// the server nothing. Main thread only.
class FrontApplication final : private X11Connection::Listener {
public:
    explicit FrontApplication(X11Connection& connection);
    ~FrontApplication();

    // UTF-8; missing when unknown.
    [[nodiscard]] const std::optional<std::string>& name() const { return m_name; }

    // Runs when the front application has become another one, or unknown.
    void setChanged(std::function<void()> changed) { m_changed = std::move(changed); }

private:
    void connectionOpened() override;
    void connectionLost() override;
    void eventArrived(const xcb_generic_event_t& event) override;

    void update();
    void setName(std::optional<std::string> name);
    [[nodiscard]] xcb_window_t activeWindow();
    [[nodiscard]] xcb_window_t focusWindow();
    [[nodiscard]] std::optional<std::string> classOf(xcb_window_t window);
    [[nodiscard]] std::optional<std::string> classOfFocus();
    void follow(xcb_window_t window);

    X11Connection& m_connection;
    std::function<void()> m_changed;
    std::optional<std::string> m_name;
    xcb_atom_t m_activeWindowAtom = XCB_ATOM_NONE;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_followed = XCB_WINDOW_NONE; // whose own changes are listened to
};

} // namespace kestrel
