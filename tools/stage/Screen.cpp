#include "tools/stage/Screen.h"

#include "tools/stage/XQuery.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace kestrel::stage {

namespace {
// Clips the area to the screen: X refuses an image that reaches beyond it.
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
    const XConnection connection = connectTo(m_display);
    const xcb_screen_t& screen = firstScreen(connection.get());
    const Area seen = partOn(screen, area);
    if (seen.width <= 0 || seen.height <= 0)
        return 0;
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root,
        static_cast<std::int16_t>(seen.x), static_cast<std::int16_t>(seen.y),
        static_cast<std::uint16_t>(seen.width), static_cast<std::uint16_t>(seen.height), ~0u);
    const XReply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection.get(), cookie, nullptr), &std::free);
    if (!image)
        throw std::runtime_error("display " + m_display + " gives no image");
    // All displays here have 24 bits in 32 bits a pixel, blue first.
    const std::uint8_t* pixel = xcb_get_image_data(image.get());
    int found = 0;
    for (int i = 0; i < seen.width * seen.height; ++i, pixel += 4)
        found += wanted({ pixel[2], pixel[1], pixel[0] }) ? 1 : 0;
    return found;
}

std::string Screen::activeWindowClass() const
{
    const XConnection connection = connectTo(m_display);
    const xcb_screen_t& screen = firstScreen(connection.get());
    const std::string active
        = propertyOf(connection.get(), screen.root, atomOf(connection.get(), "_NET_ACTIVE_WINDOW"));
    xcb_window_t window = XCB_WINDOW_NONE;
    if (active.size() == sizeof window)
        std::memcpy(&window, active.data(), sizeof window);
    return window == XCB_WINDOW_NONE ? std::string() : classOf(connection.get(), window);
}

} // namespace kestrel::stage
