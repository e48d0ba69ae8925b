#include "tests/platform/linux/x11/XClient.h"

#include <algorithm>
#include <stdexcept>

namespace kestrel::test {

XClient::XClient(const std::string& display)
    : m_connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect)
{
    if (xcb_connection_has_error(xcb()) != 0)
        throw std::runtime_error("no X server on " + display);
}

xcb_window_t XClient::root() const
{
    return xcb_setup_roots_iterator(xcb_get_setup(xcb())).data->root;
}

void XClient::synchronise() const
{
    std::free(xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr));
}

xcb_atom_t XClient::atom(std::string_view name) const
{
    const Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(xcb(),
            xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr),
        &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::uint32_t> XClient::words(xcb_window_t window, std::string_view property) const
{
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(xcb(),
            xcb_get_property(xcb(), 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096),
            nullptr),
        &std::free);
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return { first, first + xcb_get_property_value_length(reply.get()) / 4 };
}

void XClient::setText(xcb_window_t window, xcb_atom_t property, std::string_view text) const
{
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
        static_cast<std::uint32_t>(text.size()), text.data());
}

void XClient::setWords(xcb_window_t window, std::string_view property, xcb_atom_t type,
    const std::vector<std::uint32_t>& words) const
{
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
        static_cast<std::uint32_t>(words.size()), words.data());
}

void XClient::tell(
    xcb_window_t window, std::string_view message, const std::vector<std::uint32_t>& data) const
{
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(xcb(), 0, root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&event));
    xcb_flush(xcb());
}

} // namespace kestrel::test
