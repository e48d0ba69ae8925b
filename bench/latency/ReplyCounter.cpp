#include "bench/latency/ReplyCounter.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace kestrel::bench {

namespace {
enum Category : std::uint8_t { FromServer = 0, StartOfData = 4, EndOfData = 5 };

using Recorded = std::unique_ptr<xcb_record_enable_context_reply_t, decltype(&std::free)>;

Recorded nextRecorded(xcb_connection_t* connection, xcb_record_enable_context_cookie_t recording)
{
    return { xcb_record_enable_context_reply(connection, recording, nullptr), &std::free };
}
} // namespace

ReplyCounter::ReplyCounter(const std::string& display)
    : m_control(xcb_connect(display.c_str(), nullptr), &xcb_disconnect)
    , m_data(xcb_connect(display.c_str(), nullptr), &xcb_disconnect)
{
    const auto* extension = xcb_get_extension_data(m_control.get(), &xcb_record_id);
    if (!extension || !extension->present || xcb_connection_has_error(m_data.get()))
        throw std::runtime_error("the X server has no RECORD extension");
    m_context = xcb_generate_id(m_control.get());
    const xcb_record_client_spec_t clients = XCB_RECORD_CS_FUTURE_CLIENTS;
    xcb_record_range_t range {};
    range.core_replies = { 0, 127 };
    range.ext_replies.major = { 128, 255 };
    range.ext_replies.minor = { 0, 65535 };
    xcb_record_create_context(m_control.get(), m_context, 0, 1, 1, &clients, &range);
    // The answer shows that the server has made the context.
    std::free(
        xcb_get_input_focus_reply(m_control.get(), xcb_get_input_focus(m_control.get()), nullptr));
}

void ReplyCounter::start()
{
    m_recording = xcb_record_enable_context(m_data.get(), m_context);
    xcb_flush(m_data.get());
    const auto first = nextRecorded(m_data.get(), m_recording);
    if (!first || first->category != StartOfData)
        throw std::runtime_error("the X server does not record");
}

std::size_t ReplyCounter::stop()
{
    xcb_record_disable_context(m_control.get(), m_context);
    xcb_flush(m_control.get());
    std::size_t count = 0;
    for (;;) {
        const auto recorded = nextRecorded(m_data.get(), m_recording);
        if (!recorded || recorded->category == EndOfData)
            return count;
        if (recorded->category == FromServer)
            count += repliesIn({ xcb_record_enable_context_data(recorded.get()),
                static_cast<std::size_t>(xcb_record_enable_context_data_length(recorded.get())) });
    }
}

std::size_t ReplyCounter::repliesIn(std::span<const std::uint8_t> data)
{
    constexpr std::size_t Head = 32;
    std::size_t count = 0;
    while (data.size() >= Head) {
        std::uint32_t words = 0;
        std::memcpy(&words, &data[4], sizeof words);
        const std::size_t size = Head + std::size_t { 4 } * words;
        ++count;
        data = data.subspan(std::min(size, data.size()));
    }
    return count;
}

} // namespace kestrel::bench
