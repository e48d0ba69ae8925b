#pragma once

#include "bench/latency/Buttons.h"

#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <string>

namespace kestrel::bench {

// Stands in for the workstation: a real window of class "Pro Tools", in front and focused. It notes
// when each key event reaches its client.
class WorkstationWindow {
public:
    struct KeyEvent {
        Stroke stroke;
        std::int64_t time = 0; // monotonic, ns
    };

    // Throws std::runtime_error when the window does not get the focus within ten seconds.
    explicit WorkstationWindow(const std::string& display);

    // Throws std::runtime_error when the window does not get the focus within ten seconds.
    void comeToFront();

    // The next key event of any button. No value when none has come by the deadline (monotonic,
    // ns).
    [[nodiscard]] std::optional<KeyEvent> nextKey(std::int64_t deadline);
    [[nodiscard]] int keysDown();
    void letGoOfAllKeys();

private:
    [[nodiscard]] xcb_atom_t atom(const char* name);
    [[nodiscard]] bool isInFront();
    void name();
    void waitForFront();

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

} // namespace kestrel::bench
