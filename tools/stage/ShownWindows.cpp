#include "tools/stage/ShownWindows.h"

#include "tools/stage/XQuery.h"

#include <optional>

namespace kestrel::stage {

namespace {
// A window may vanish between two questions. A window without an answer counts as gone.
class WindowSearch {
public:
    WindowSearch(xcb_connection_t* connection, std::string_view windowClass)
        : m_connection(connection)
        , m_class(windowClass)
    {
    }

    void lookBelow(xcb_window_t parent)
    {
        const XReply<xcb_query_tree_reply_t> tree(
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
        if (classOf(m_connection, window) != m_class)
            return;
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(
                m_connection, xcb_get_window_attributes(m_connection, window), nullptr),
            &std::free);
        const auto area = areaOf(window, root);
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !area)
            return;
        m_found.push_back({ window, propertyOf(m_connection, window, XCB_ATOM_WM_NAME), *area,
            attributes->override_redirect != 0 });
    }

    [[nodiscard]] std::optional<Area> areaOf(xcb_window_t window, xcb_window_t root) const
    {
        const XReply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr),
            &std::free);
        const XReply<xcb_translate_coordinates_reply_t> place(
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
    const XConnection connection = connectTo(display);
    WindowSearch search(connection.get(), windowClass);
    search.lookBelow(firstScreen(connection.get()).root);
    return search.take();
}

} // namespace kestrel::stage
