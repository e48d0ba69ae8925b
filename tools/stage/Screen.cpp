#include "tools/stage/Screen.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace kestrel::stage {

namespace {
constexpr int TrayHeight = 24;

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

Connection connect(const std::string& display)
{
    return { xcb_connect(display.c_str(), nullptr), &xcb_disconnect };
}

const xcb_screen_t& firstScreen(xcb_connection_t* connection, const std::string& display)
{
    if (xcb_connection_has_error(connection) != 0)
        throw std::runtime_error("display " + display + " does not answer");
    return *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}
} // namespace

int Screen::count(const Area& area, const std::function<bool(Colour)>& wanted) const
{
    const Connection connection = connect(m_display);
    const xcb_screen_t& screen = firstScreen(connection.get(), m_display);
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root,
        static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
        static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), ~0u);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
        xcb_get_image_reply(connection.get(), cookie, nullptr), &std::free);
    if (!image)
        throw std::runtime_error("display " + m_display + " gives no image");
    // 24 bits a pixel in 32, blue first, on every display that the stage makes.
    const std::uint8_t* pixel = xcb_get_image_data(image.get());
    int found = 0;
    for (int i = 0; i < area.width * area.height; ++i, pixel += 4)
        found += wanted({ pixel[2], pixel[1], pixel[0] }) ? 1 : 0;
    return found;
}

int Screen::countInTray(const std::function<bool(Colour)>& wanted) const
{
    const Connection connection = connect(m_display);
    const xcb_screen_t& screen = firstScreen(connection.get(), m_display);
    return count({ 0, 0, screen.width_in_pixels, TrayHeight }, wanted);
}

} // namespace kestrel::stage
