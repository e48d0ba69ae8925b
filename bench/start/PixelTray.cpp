#include "bench/start/PixelTray.h"

#include "bench/latency/Clock.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <stdexcept>

namespace kestrel::bench {

namespace {
constexpr std::uint16_t Side = 24; // of the tray and of an item, in pixels
constexpr std::uint32_t Ground = 0xFF00FF; // no item's picture has this colour
constexpr std::uint32_t RequestDock = 0;
constexpr int LookEveryMs = 1;

template <typename T> std::unique_ptr<T, decltype(&std::free)> owned(T* given)
{
    return { given, &std::free };
}
} // namespace

PixelTray::PixelTray(const std::string& display)
    : m_connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect)
{
    if (xcb_connection_has_error(m_connection.get()))
        throw std::runtime_error("the X server does not answer on " + display);
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    m_opcode = atom("_NET_SYSTEM_TRAY_OPCODE");
    m_window = xcb_generate_id(m_connection.get());
    const std::array<std::uint32_t, 3> values { Ground, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY };
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, m_screen->root, 0, 0,
        Side, Side, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(m_connection.get(), m_window);
    claim();
}

xcb_atom_t PixelTray::atom(const std::string& name)
{
    const auto found = owned(xcb_intern_atom_reply(m_connection.get(),
        xcb_intern_atom(
            m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    return found ? found->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void PixelTray::claim()
{
    const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
    const auto owner = owned(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), selection), nullptr));
    if (!owner || owner->owner != XCB_WINDOW_NONE)
        throw std::runtime_error("the display has another tray");
    xcb_set_selection_owner(m_connection.get(), m_window, selection, XCB_CURRENT_TIME);
    xcb_flush(m_connection.get());
}

std::optional<PixelTray::Times> PixelTray::takeItem(std::int64_t deadline)
{
    const auto item = nextRequest(deadline);
    if (!item)
        return {};
    Times times;
    times.docked = monotonicNanoseconds();
    embed(*item);
    while (!showsPicture()) {
        if (monotonicNanoseconds() > deadline)
            return {};
    }
    times.shown = monotonicNanoseconds();
    return times;
}

void PixelTray::awaitEmpty(std::int64_t deadline)
{
    while (monotonicNanoseconds() < deadline) {
        const auto tree = owned(xcb_query_tree_reply(
            m_connection.get(), xcb_query_tree(m_connection.get(), m_window), nullptr));
        if (!tree || tree->children_len == 0)
            return;
        ::poll(nullptr, 0, LookEveryMs);
    }
    throw std::runtime_error("an item stays in the tray though its program has ended");
}

std::optional<xcb_window_t> PixelTray::nextRequest(std::int64_t deadline)
{
    while (monotonicNanoseconds() < deadline) {
        while (const auto event = owned(xcb_poll_for_event(m_connection.get()))) {
            if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE)
                continue;
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if (message.type == m_opcode && message.data.data32[1] == RequestDock)
                return message.data.data32[2];
        }
        pollfd ready { xcb_get_file_descriptor(m_connection.get()), POLLIN, 0 };
        ::poll(&ready, 1, 100);
    }
    return {};
}

void PixelTray::embed(xcb_window_t item)
{
    const std::array<std::uint32_t, 2> size { Side, Side };
    xcb_reparent_window(m_connection.get(), item, m_window, 0, 0);
    xcb_configure_window(
        m_connection.get(), item, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    xcb_map_window(m_connection.get(), item);
    xcb_flush(m_connection.get());
}

bool PixelTray::showsPicture()
{
    const auto image = owned(xcb_get_image_reply(m_connection.get(),
        xcb_get_image(
            m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, Side, Side, 0xFFFFFF),
        nullptr));
    if (!image)
        return false;
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
    return std::any_of(pixels, pixels + std::size_t { Side } * Side,
        [](std::uint32_t pixel) { return (pixel & 0xFFFFFF) != Ground; });
}

} // namespace kestrel::bench
