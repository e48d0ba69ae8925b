#include "tools/stage/XQuery.h"

#include <stdexcept>

namespace kestrel::stage {

namespace {
constexpr std::uint32_t MaxPropertyWords = 256;
} // namespace

XConnection connectTo(const std::string& display)
{
    XConnection connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0)
        throw std::runtime_error("display " + display + " does not answer");
    return connection;
}

const xcb_screen_t& firstScreen(xcb_connection_t* connection)
{
    return *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name)
{
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr),
        &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::string propertyOf(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
{
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
            xcb_get_property(
                connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, MaxPropertyWords),
            nullptr),
        &std::free);
    if (!reply)
        return {};
    return { static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) };
}

std::string classOf(xcb_connection_t* connection, xcb_window_t window)
{
    // Two strings, each ended by a zero byte; the second is the class.
    const std::string names = propertyOf(connection, window, XCB_ATOM_WM_CLASS);
    const auto first = names.find('\0');
    return first == std::string::npos ? std::string() : std::string(names.c_str() + first + 1);
}

} // namespace kestrel::stage
