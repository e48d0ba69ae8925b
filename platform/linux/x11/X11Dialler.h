#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>

namespace kestrel {

// Makes connections to the X server. Connecting waits for the server as long as that accepts and
// says nothing, so it happens on a thread of its own, and the caller waits no longer than it wants.
class X11Dialler {
public:
    struct Disconnect {
        void operator()(xcb_connection_t* xcb) const { xcb_disconnect(xcb); }
    };
    // Never without a connection, which may be one that has failed.
    struct Line {
        std::unique_ptr<xcb_connection_t, Disconnect> xcb;
        int screenNumber = 0;
        std::string displayName; // as the environment gave it; empty when it gave none
    };

    // The display of the environment. Missing when the server has not answered within `patience`:
    // then the attempt goes on, and the next call takes up what has become of it, without waiting.
    [[nodiscard]] std::optional<Line> dial(std::chrono::milliseconds patience);

private:
    std::future<Line> m_attempt;
};

} // namespace kestrel
