#include "tools/stage/ShownWindows.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>

namespace kestrel::stage {

namespace {
using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;
template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

constexpr std::uint32_t MaxTextWords = 64;

// Windows may vanish while they are looked at: whatever is not answered counts as not there.
class WindowSearch {
public:
    WindowSearch(xcb_connection_t* connection, std::string_view windowClass)
        : m_connection(connection)
        , m_class(windowClass)
    {
    }

    void lookBelow(xcb_window_t parent)
    {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, parent), nullptr),
            &std::free);
        if (!tree)
            return;
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            lookAt(children[i], tree->root);
            lookBelow(children[i]);
        }
    }

    [[nodiscard]] std::vector<ShownWindow> take() { return std::move(m_found); }

private:
    void lookAt(xcb_window_t window, xcb_window_t root)
    {
        // Two strings, each ended by a zero byte; the second is the class.
        const std::string names = text(window, XCB_ATOM_WM_CLASS);
        const auto first = names.find('\0');
        if (first == std::string::npos || names.c_str() + first + 1 != m_class)
            return;
        const Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(
                m_connection, xcb_get_window_attributes(m_connection, window), nullptr),
            &std::free);
        const auto area = areaOf(window, root);
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !area)
            return;
        m_found.push_back(
            { window, text(window, XCB_ATOM_WM_NAME), *area, attributes->override_redirect != 0 });
    }

    [[nodiscard]] std::string text(xcb_window_t window, xcb_atom_t property) const
    {
        const Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(m_connection,
                xcb_get_property(
                    m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, MaxTextWords),
                nullptr),
            &std::free);
        if (!reply)
            return {};
        return { static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) };
    }

    [[nodiscard]] std::optional<Area> areaOf(xcb_window_t window, xcb_window_t root) const
    {
        const Reply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr),
            &std::free);
        const Reply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(
                m_connection, xcb_translate_coordinates(m_connection, window, root, 0, 0), nullptr),
            &std::free);
        if (!size || !place)
            return {};
        return Area { place->dst_x, place->dst_y, size->width, size->height };
    }

    xcb_connection_t* m_connection;
    std::string_view m_class;
    std::vector<ShownWindow> m_found;
};
} // namespace

std::vector<ShownWindow> shownWindows(const std::string& display, std::string_view windowClass)
{
    const Connection connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0)
        throw std::runtime_error("display " + display + " does not answer");
    WindowSearch search(connection.get(), windowClass);
    search.lookBelow(xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root);
    return search.take();
}

} // namespace kestrel::stage
