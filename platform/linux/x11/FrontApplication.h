#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <functional>
#include <optional>
#include <string>

namespace kestrel {

// Knows which application is in front: the class of the window that _NET_ACTIVE_WINDOW names, or
// else of the window that has the input focus. Events from the X server keep it current, so name()
// asks the server nothing. Main thread only.
class FrontApplication final : private X11Connection::Listener {
public:
    explicit FrontApplication(X11Connection& connection);
    ~FrontApplication();

    // Usually UTF-8, but unchecked. No value when the front application is unknown.
    [[nodiscard]] const std::optional<std::string>& name() const { return m_name; }

    // The class of any window. No value when it has none or the server does not answer.
    [[nodiscard]] std::optional<std::string> classOf(xcb_window_t window) const;

    // `changed` runs when another application has come to the front, or when the front application
    // has become unknown.
    void setChanged(std::function<void()> changed) { m_changed = std::move(changed); }

private:
    void connectionOpened() override;
    void connectionLost() override;
    void eventArrived(const xcb_generic_event_t& event) override;

    void update();
    void setName(std::optional<std::string> name);
    [[nodiscard]] xcb_window_t activeWindow();
    [[nodiscard]] xcb_window_t focusWindow();
    [[nodiscard]] std::optional<std::string> classOfFocus();
    void follow(xcb_window_t window);

    X11Connection& m_connection;
    std::function<void()> m_changed;
    std::optional<std::string> m_name;
    xcb_atom_t m_activeWindowAtom = XCB_ATOM_NONE;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_followed = XCB_WINDOW_NONE; // the window whose events we select
};

} // namespace kestrel
