#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace kestrel::test {

// Changes the only display of a private X server, as if it were unplugged or got another mode.
class RandrScreen {
public:
    // The connection outlives this object.
    RandrScreen(xcb_connection_t* connection, xcb_window_t root);

    // The size is at most the one at the start of the server. Throws std::runtime_error if the
    // server refuses.
    void resize(std::uint16_t width, std::uint16_t height);

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
};

} // namespace kestrel::test
