#include "bench/latency/WorkstationWindow.h"

#include "bench/latency/Clock.h"
#include "bench/latency/Interruption.h"

#include <poll.h>
#include <time.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace kestrel::bench {

namespace {
template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

template <typename T> Reply<T> reply(T* given)
{
    return { given, &std::free };
}
} // namespace

WorkstationWindow::WorkstationWindow(const std::string& display)
    : m_connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect)
{
    if (xcb_connection_has_error(m_connection.get()))
        throw std::runtime_error("the X server does not answer on " + display);
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    m_root = screen->root;
    m_window = xcb_generate_id(m_connection.get());
    const uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, m_root, 0, 0, 400, 300, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK, &events);
    name();
    xcb_map_window(m_connection.get(), m_window);
    xcb_flush(m_connection.get());
    waitForFront();
}

void WorkstationWindow::name()
{
    constexpr char Class[] = "Pro Tools\0Pro Tools"; // instance and class, each ends with a zero
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS,
        XCB_ATOM_STRING, 8, sizeof Class, Class);
    constexpr std::string_view Title = "Pro Tools";
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NAME,
        XCB_ATOM_STRING, 8, Title.size(), Title.data());
}

xcb_atom_t WorkstationWindow::atom(const char* name)
{
    const auto found = reply(xcb_intern_atom_reply(m_connection.get(),
        xcb_intern_atom(m_connection.get(), 0, static_cast<uint16_t>(std::strlen(name)), name),
        nullptr));
    return found ? found->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

bool WorkstationWindow::isInFront()
{
    const auto active = reply(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(
            m_connection.get(), 0, m_root, atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    const auto focus = reply(xcb_get_input_focus_reply(
        m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    xcb_window_t window = XCB_WINDOW_NONE;
    if (active && xcb_get_property_value_length(active.get()) == 4)
        std::memcpy(&window, xcb_get_property_value(active.get()), sizeof window);
    return window == m_window && focus && focus->focus == m_window;
}

// As a task bar asks the window manager for it.
void WorkstationWindow::comeToFront()
{
    xcb_client_message_event_t request {};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_window;
    request.type = atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = 2; // a pager asks
    xcb_send_event(m_connection.get(), 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&request));
    xcb_flush(m_connection.get());
    waitForFront();
}

void WorkstationWindow::waitForFront()
{
    for (int attempt = 0; attempt < 1000; ++attempt) {
        if (isInFront())
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error("the window manager does not put the workstation's window in front");
}

std::optional<WorkstationWindow::KeyEvent> WorkstationWindow::nextKey(std::int64_t deadline)
{
    for (;;) {
        while (const auto event = reply(xcb_poll_for_event(m_connection.get()))) {
            const auto now = monotonicNanoseconds();
            const auto type = event->response_type & 0x7F;
            if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
                continue;
            const auto button = buttonOfKeyCode(event->pad0);
            if (button) {
                const auto direction
                    = type == XCB_KEY_PRESS ? Direction::Press : Direction::Release;
                return KeyEvent { { *button, direction }, now };
            }
        }
        if (xcb_connection_has_error(m_connection.get()))
            throw std::runtime_error("the X server has gone");
        Interruption::check();
        const auto left = deadline - monotonicNanoseconds();
        if (left <= 0)
            return {};
        pollfd ready { xcb_get_file_descriptor(m_connection.get()), POLLIN, 0 };
        const timespec timeout { left / 1'000'000'000, left % 1'000'000'000 };
        ::ppoll(&ready, 1, &timeout, nullptr);
    }
}

int WorkstationWindow::keysDown()
{
    const auto map = reply(
        xcb_query_keymap_reply(m_connection.get(), xcb_query_keymap(m_connection.get()), nullptr));
    int count = 0;
    for (int code = 0; map && code < 256; ++code)
        count += (map->keys[code / 8] >> (code % 8)) & 1;
    return count;
}

void WorkstationWindow::letGoOfAllKeys()
{
    const auto map = reply(
        xcb_query_keymap_reply(m_connection.get(), xcb_query_keymap(m_connection.get()), nullptr));
    for (int code = 0; map && code < 256; ++code) {
        if ((map->keys[code / 8] >> (code % 8)) & 1)
            xcb_test_fake_input(m_connection.get(), XCB_KEY_RELEASE, static_cast<uint8_t>(code),
                XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
    xcb_flush(m_connection.get());
    while (nextKey(monotonicNanoseconds() + 50'000'000)) { }
}

} // namespace kestrel::bench
