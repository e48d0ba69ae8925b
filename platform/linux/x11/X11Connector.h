#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>

namespace kestrel {

// Makes connections to the X server. xcb_connect() waits without a limit for a server that accepts
// the connection and says nothing, so it runs on a thread of its own, and the caller's wait is
// limited.
class X11Connector {
public:
    struct Disconnect {
        void operator()(xcb_connection_t* xcb) const { xcb_disconnect(xcb); }
    };
    // `xcb` is never null, but the connection may have failed.
    struct Connected {
        std::unique_ptr<xcb_connection_t, Disconnect> xcb;
        int screenNumber = 0;
        std::string displayName; // value of DISPLAY; empty when it is not set
    };

    // Connects to the display that DISPLAY names. No value when the server has not answered within
    // `patience`. The attempt then goes on, and the next call takes its result, if there is one,
    // without waiting.
    [[nodiscard]] std::optional<Connected> connect(std::chrono::milliseconds patience);

private:
    std::future<Connected> m_attempt;
};

} // namespace kestrel
