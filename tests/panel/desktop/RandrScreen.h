#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace kestrel::test {

// The one display of a private X server, changed as a display is that goes or gets another mode.
class RandrScreen {
public:
    RandrScreen(xcb_connection_t* connection, xcb_window_t root); // which outlives this

    // No larger than the server was started with. Throws std::runtime_error when it is refused.
    void resize(std::uint16_t width, std::uint16_t height);

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
};

} // namespace kestrel::test
