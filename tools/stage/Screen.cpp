#include "tools/stage/Screen.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace kestrel::stage {

namespace {
using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

Connection connect(const std::string& display)
{
    return { xcb_connect(display.c_str(), nullptr), &xcb_disconnect };
}

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

constexpr std::uint32_t MaxPropertyWords = 256;

// The bytes of a property; empty when the window has none of this name, or is gone.
std::string property(xcb_connection_t* connection, xcb_window_t window, std::string_view name)
{
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr),
        &std::free);
    if (!atom)
        return {};
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
            xcb_get_property(
                connection, 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, MaxPropertyWords),
            nullptr),
        &std::free);
    if (!reply)
        return {};
    return { static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) };
}

const xcb_screen_t& firstScreen(xcb_connection_t* connection, const std::string& display)
{
    if (xcb_connection_has_error(connection) != 0)
        throw std::runtime_error("display " + display + " does not answer");
    return *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

// A display gives no image of what is beside it.
Area partOn(const xcb_screen_t& screen, const Area& area)
{
    const int left = std::max(area.x, 0);
    const int top = std::max(area.y, 0);
    const int right = std::min<int>(area.x + area.width, screen.width_in_pixels);
    const int bottom = std::min<int>(area.y + area.height, screen.height_in_pixels);
    return { left, top, right - left, bottom - top };
}
} // namespace

int Screen::count(const Area& area, const std::function<bool(Colour)>& wanted) const
{
    const Connection connection = connect(m_display);
    const xcb_screen_t& screen = firstScreen(connection.get(), m_display);
    const Area seen = partOn(screen, area);
    if (seen.width <= 0 || seen.height <= 0)
        return 0;
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root,
        static_cast<std::int16_t>(seen.x), static_cast<std::int16_t>(seen.y),
        static_cast<std::uint16_t>(seen.width), static_cast<std::uint16_t>(seen.height), ~0u);
    const Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection.get(), cookie, nullptr), &std::free);
    if (!image)
        throw std::runtime_error("display " + m_display + " gives no image");
    // 24 bits a pixel in 32, blue first, on every display that the stage makes.
    const std::uint8_t* pixel = xcb_get_image_data(image.get());
    int found = 0;
    for (int i = 0; i < seen.width * seen.height; ++i, pixel += 4)
        found += wanted({ pixel[2], pixel[1], pixel[0] }) ? 1 : 0;
    return found;
}

std::string Screen::activeWindowClass() const
{
    const Connection connection = connect(m_display);
    const xcb_screen_t& screen = firstScreen(connection.get(), m_display);
    const std::string active = property(connection.get(), screen.root, "_NET_ACTIVE_WINDOW");
    xcb_window_t window = XCB_WINDOW_NONE;
    if (active.size() == sizeof window)
        std::memcpy(&window, active.data(), sizeof window);
    if (window == XCB_WINDOW_NONE)
        return {};
    // Two strings, each ended by a zero byte; the second is the class.
    const std::string names = property(connection.get(), window, "WM_CLASS");
    const auto first = names.find('\0');
    return first == std::string::npos ? std::string() : std::string(names.c_str() + first + 1);
}

} // namespace kestrel::stage
