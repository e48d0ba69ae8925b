#include "platform/linux/x11/FrontApplication.h"

#include <algorithm>
#include <string_view>

namespace kestrel {

namespace {
// Far deeper than any real window. The limit ends the climb when the window tree changes meanwhile.
constexpr int MaxWindowDepth = 32;
constexpr std::uint32_t MaxClassWords = 256;

// Returns the second of the two strings of a WM_CLASS property.
std::string_view classPart(std::string_view property)
{
    const auto end = property.find('\0');
    if (end == std::string_view::npos)
        return {};
    const std::string_view rest = property.substr(end + 1);
    return rest.substr(0, rest.find('\0'));
}

// WM_CLASS is Latin-1 by convention and UTF-8 in practice. The bytes are passed on unchecked:
// text that is not UTF-8 matches no name that we look for, and who shows it replaces what is wrong.
std::string_view text(const xcb_get_property_reply_t& reply)
{
    return { static_cast<const char*>(xcb_get_property_value(&reply)),
        static_cast<std::size_t>(xcb_get_property_value_length(&reply)) };
}

template <typename T> const T& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const T&>(event);
}
} // namespace

FrontApplication::FrontApplication(X11Connection& connection)
    : m_connection(connection)
{
    m_connection.add(*this);
}

FrontApplication::~FrontApplication()
{
    m_connection.remove(*this);
}

void FrontApplication::connectionOpened()
{
    static constexpr std::string_view Name = "_NET_ACTIVE_WINDOW";
    xcb_connection_t* xcb = m_connection.xcb();
    m_root = m_connection.screen().root;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(xcb, m_root, XCB_CW_EVENT_MASK, &mask);
    const auto atom = m_connection.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(xcb, 0, Name.size(), Name.data()).sequence);
    m_activeWindowAtom = atom ? atom->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    update();
}

void FrontApplication::connectionLost()
{
    m_followed = XCB_WINDOW_NONE;
    setName({});
}

void FrontApplication::eventArrived(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& property = as<xcb_property_notify_event_t>(event);
        const bool active = property.window == m_root && property.atom == m_activeWindowAtom;
        const bool renamed = property.window == m_followed && property.atom == XCB_ATOM_WM_CLASS;
        if (active || renamed)
            update();
        break;
    }
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT: {
        // A keyboard grab moves the focus for a moment; the front application stays the same.
        const auto mode = as<xcb_focus_in_event_t>(event).mode;
        if (mode != XCB_NOTIFY_MODE_GRAB && mode != XCB_NOTIFY_MODE_UNGRAB)
            update();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (as<xcb_destroy_notify_event_t>(event).window == m_followed) {
            follow(XCB_WINDOW_NONE);
            update();
        }
        break;
    default:
        break;
    }
}

void FrontApplication::update()
{
    if (const xcb_window_t active = activeWindow(); active != XCB_WINDOW_NONE) {
        follow(active);
        setName(classOf(active));
    } else {
        setName(classOfFocus());
    }
}

void FrontApplication::setName(std::optional<std::string> name)
{
    if (name == m_name)
        return;
    m_name = std::move(name);
    if (m_changed)
        m_changed();
}

xcb_window_t FrontApplication::activeWindow()
{
    const auto reply = m_connection.reply<xcb_get_property_reply_t>(
        xcb_get_property(m_connection.xcb(), 0, m_root, m_activeWindowAtom, XCB_ATOM_WINDOW, 0, 1)
            .sequence);
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != 4)
        return XCB_WINDOW_NONE;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

xcb_window_t FrontApplication::focusWindow()
{
    const auto reply = m_connection.reply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus(m_connection.xcb()).sequence);
    const bool window = reply && reply->focus != XCB_INPUT_FOCUS_NONE
        && reply->focus != XCB_INPUT_FOCUS_POINTER_ROOT;
    return window ? reply->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

std::optional<std::string> FrontApplication::classOf(xcb_window_t window) const
{
    const auto reply
        = m_connection.reply<xcb_get_property_reply_t>(xcb_get_property(m_connection.xcb(), 0,
            window, XCB_ATOM_WM_CLASS, XCB_GET_PROPERTY_TYPE_ANY, 0, MaxClassWords)
                                                           .sequence);
    if (!reply || reply->format != 8)
        return {};
    const std::string_view name = classPart(text(*reply));
    return name.empty() ? std::nullopt : std::optional<std::string>(name);
}

// Climbs from the focused window towards the root, because the focus may be on a child of the
// window that carries the class.
std::optional<std::string> FrontApplication::classOfFocus()
{
    xcb_window_t window = focusWindow();
    follow(window);
    for (int depth = 0; depth < MaxWindowDepth; ++depth) {
        if (window == XCB_WINDOW_NONE || window == m_root)
            return {};
        if (auto name = classOf(window))
            return name;
        const auto tree = m_connection.reply<xcb_query_tree_reply_t>(
            xcb_query_tree(m_connection.xcb(), window).sequence);
        if (!tree)
            return {};
        window = tree->parent;
    }
    return {};
}

void FrontApplication::follow(xcb_window_t window)
{
    if (window == m_followed)
        return;
    if (m_followed != XCB_WINDOW_NONE)
        m_connection.stopListeningTo(m_followed);
    m_followed = window == m_root ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : window;
    if (m_followed != XCB_WINDOW_NONE)
        m_connection.listenTo(m_followed);
}

} // namespace kestrel
