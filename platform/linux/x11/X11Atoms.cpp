#include "platform/linux/x11/X11Atoms.h"

namespace kestrel::X11Atoms {

xcb_atom_t intern(X11Connection& connection, std::string_view name)
{
    const auto reply = connection.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(connection.xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data())
            .sequence);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::uint32_t> words(
    X11Connection& connection, xcb_window_t window, xcb_atom_t property, std::uint32_t limit)
{
    const auto reply = connection.reply<xcb_get_property_reply_t>(
        xcb_get_property(connection.xcb(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, limit)
            .sequence);
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    const auto bytes = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return { first, first + bytes / sizeof *first };
}

} // namespace kestrel::X11Atoms
