#pragma once

#include <xcb/record.h>
#include <xcb/xcb.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace kestrel::bench {

// Counts the replies of the X server to every client that connects after this object was made. Each
// reply is a round trip that the client may have waited for. Counting slows the server down, so it
// runs only between start() and stop().
class ReplyCounter {
public:
    // Throws std::runtime_error when the server does not record.
    explicit ReplyCounter(const std::string& display);

    void start();
    [[nodiscard]] std::size_t stop();

private:
    using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

    [[nodiscard]] static std::size_t repliesIn(std::span<const std::uint8_t> data);

    // Separate from m_data, because the server answers nothing on a connection while it records for
    // it.
    Connection m_control;
    Connection m_data;
    xcb_record_context_t m_context = 0;
    xcb_record_enable_context_cookie_t m_recording {};
};

} // namespace kestrel::bench
