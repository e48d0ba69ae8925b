#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/x11/DesktopOpen.h"
#include "platform/linux/x11/X11Atoms.h"

#include <unistd.h>

namespace kestrel {

namespace {
constexpr std::uint32_t MaxClients = 4096;
// The source of a request: window managers obey a pager regardless of user time.
constexpr std::uint32_t FromPager = 2;
} // namespace

X11Workspace::X11Workspace(std::shared_ptr<X11Session> session)
    : m_session(std::move(session))
{
}

void X11Workspace::visitActiveApplications(const Visitor& visit)
{
    if (!m_session->connection.ensureOpen())
        return;
    m_session->connection.takeIn();
    if (const auto& name = m_session->front.name())
        visit(*name);
}

bool X11Workspace::openFile(std::string_view path)
{
    return DesktopOpen::open(path);
}

void X11Workspace::activateApplication()
{
    const auto windows = ownWindows();
    if (!windows.empty())
        askWindowManager(windows.back(), "_NET_ACTIVE_WINDOW", FromPager, XCB_CURRENT_TIME);
    m_session->connection.flush();
}

// Our windows, in the order in which they were mapped.
std::vector<xcb_window_t> X11Workspace::ownWindows()
{
    X11Connection& connection = m_session->connection;
    std::vector<xcb_window_t> own;
    if (!connection.ensureOpen())
        return own;
    const xcb_atom_t clientList = X11Atoms::intern(connection, "_NET_CLIENT_LIST");
    const xcb_atom_t processId = X11Atoms::intern(connection, "_NET_WM_PID");
    const auto self = static_cast<std::uint32_t>(::getpid());
    for (const xcb_window_t window :
        X11Atoms::words(connection, connection.screen().root, clientList, MaxClients)) {
        const auto owner = X11Atoms::words(connection, window, processId, 1);
        if (owner.size() == 1 && owner.front() == self)
            own.push_back(window);
    }
    return own;
}

void X11Workspace::askWindowManager(
    xcb_window_t window, std::string_view message, std::uint32_t first, std::uint32_t second)
{
    X11Connection& connection = m_session->connection;
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = X11Atoms::intern(connection, message);
    event.data.data32[0] = first;
    event.data.data32[1] = second;
    if (connection.isOpen())
        xcb_send_event(connection.xcb(), 0, connection.screen().root,
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
            reinterpret_cast<const char*>(&event));
}

} // namespace kestrel
