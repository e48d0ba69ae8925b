#include "tests/platform/linux/x11/RandrScreen.h"

#include "tools/stage/XQuery.h"

#include <xcb/randr.h>

#include <stdexcept>
#include <string>

namespace kestrel::test {

namespace {
template <typename T> stage::XReply<T> owned(T* reply)
{
    if (!reply)
        throw std::runtime_error("the X server refuses to change the display");
    return { reply, &std::free };
}

std::uint32_t millimetres(std::uint32_t pixels)
{
    return pixels * 254 / 960; // at 96 pixels an inch
}

// The only display of the server.
struct Display {
    xcb_randr_crtc_t controller;
    xcb_randr_output_t output;
    xcb_timestamp_t time;
};

Display firstDisplay(xcb_connection_t* connection, xcb_window_t root)
{
    const auto resources = owned(xcb_randr_get_screen_resources_reply(
        connection, xcb_randr_get_screen_resources(connection, root), nullptr));
    if (resources->num_crtcs == 0 || resources->num_outputs == 0)
        throw std::runtime_error("the X server has no display");
    return { *xcb_randr_get_screen_resources_crtcs(resources.get()),
        *xcb_randr_get_screen_resources_outputs(resources.get()), resources->config_timestamp };
}

xcb_randr_mode_t makeMode(
    xcb_connection_t* connection, xcb_window_t root, std::uint16_t width, std::uint16_t height)
{
    static int made = 0; // mode names must be unique
    const std::string name = "test " + std::to_string(++made);
    xcb_randr_mode_info_t mode {};
    mode.width = width;
    mode.height = height;
    mode.htotal = width;
    mode.vtotal = height;
    mode.dot_clock = width * height * 60u;
    mode.name_len = static_cast<std::uint16_t>(name.size());
    return owned(xcb_randr_create_mode_reply(connection,
                     xcb_randr_create_mode(connection, root, mode,
                         static_cast<std::uint32_t>(name.size()), name.data()),
                     nullptr))
        ->mode;
}

// XCB_NONE as mode switches the display off.
void show(xcb_connection_t* connection, const Display& display, xcb_randr_mode_t mode)
{
    const bool isOn = mode != XCB_NONE;
    const auto reply = owned(xcb_randr_set_crtc_config_reply(connection,
        xcb_randr_set_crtc_config(connection, display.controller, XCB_CURRENT_TIME, display.time, 0,
            0, mode, XCB_RANDR_ROTATION_ROTATE_0, isOn ? 1 : 0, isOn ? &display.output : nullptr),
        nullptr));
    if (reply->status != XCB_RANDR_SET_CONFIG_SUCCESS)
        throw std::runtime_error("the display does not take the mode");
}
} // namespace

RandrScreen::RandrScreen(xcb_connection_t* connection, xcb_window_t root)
    : m_connection(connection)
    , m_root(root)
{
}

void RandrScreen::resize(std::uint16_t width, std::uint16_t height)
{
    const xcb_randr_mode_t mode = makeMode(m_connection, m_root, width, height);
    const Display display = firstDisplay(m_connection, m_root);
    xcb_randr_add_output_mode(m_connection, display.output, mode);
    xcb_grab_server(m_connection); // hides the moment without a display from other clients
    show(m_connection, display, XCB_NONE);
    xcb_randr_set_screen_size(
        m_connection, m_root, width, height, millimetres(width), millimetres(height));
    show(m_connection, display, mode);
    xcb_ungrab_server(m_connection);
    xcb_flush(m_connection);
}

} // namespace kestrel::test
