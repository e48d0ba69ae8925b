#include "tools/stage/PrivateXServer.h"

#include "tools/stage/XQuery.h"

#include <csignal>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace kestrel::stage {

namespace {
bool hasProperty(xcb_connection_t* connection, xcb_window_t window, std::string_view name)
{
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
            xcb_get_property(
                connection, 0, window, atomOf(connection, name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1),
            nullptr),
        &std::free);
    return reply && reply->type != XCB_ATOM_NONE;
}

// A window manager announces itself before it manages windows, and may never manage a window that
// was mapped in between. So it is ready when it manages this probe, which is mapped anew each time.
bool managesWindows(xcb_connection_t* connection)
{
    if (!hasProperty(connection, firstScreen(connection).root, "_NET_SUPPORTING_WM_CHECK"))
        return false;
    const xcb_window_t probe = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, probe, firstScreen(connection).root, 0, 0,
        1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection, probe);
    xcb_flush(connection);
    bool managed = false;
    for (int attempt = 0; attempt < 20 && !managed; ++attempt) {
        std::this_thread::sleep_for(milliseconds(5));
        managed = hasProperty(connection, probe, "WM_STATE");
    }
    xcb_destroy_window(connection, probe);
    return managed;
}

// Waits until the window manager has finished with the probe window.
bool hasNoWindow(xcb_connection_t* connection)
{
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
            xcb_get_property(connection, 0, firstScreen(connection).root,
                atomOf(connection, "_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 0, 1),
            nullptr),
        &std::free);
    return reply && xcb_get_property_value_length(reply.get()) == 0;
}

bool hasTray(xcb_connection_t* connection)
{
    const XReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection,
            xcb_get_selection_owner(connection, atomOf(connection, "_NET_SYSTEM_TRAY_S0")),
            nullptr),
        &std::free);
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void waitUntil(const std::string& display, const char* what,
    const std::function<bool(xcb_connection_t*)>& holds)
{
    const XConnection connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect);
    for (int attempt = 0; attempt < 1000; ++attempt) {
        if (xcb_connection_has_error(connection.get()) == 0 && holds(connection.get()))
            return;
        std::this_thread::sleep_for(milliseconds(10));
    }
    throw std::runtime_error(std::string(what) + " did not come up");
}
} // namespace

PrivateXServer::PrivateXServer()
    : PrivateXServer(Options {})
{
}

PrivateXServer::PrivateXServer(const Options& options)
{
    startServer(options);
    if (options.windowManager)
        startWindowManager();
    if (options.tray)
        startTray();
}

void PrivateXServer::startServer(const Options& options)
{
    std::vector<std::string> command { "Xvfb", "-displayfd", "1", "-screen", "0", options.screen,
        "-nolisten", "tcp", "-noreset", "-dpi", "96" };
    if (!options.without.empty())
        command.insert(command.end(), { "-extension", options.without });
    m_server = std::make_unique<ChildProcess>(std::move(command));
    const auto number = m_server->waitForLine(
        [](std::string_view line) { return !line.empty(); }, milliseconds(10000));
    if (!number)
        throw std::runtime_error("the private X server did not come up");
    m_display = ":" + *number;
}

void PrivateXServer::startWindowManager()
{
    m_windowManager
        = std::make_unique<ChildProcess>(std::vector<std::string> { "openbox" }, environment());
    waitUntil(m_display, "the window manager", managesWindows);
    waitUntil(m_display, "the window manager", hasNoWindow);
}

void PrivateXServer::startTray()
{
    m_tray = std::make_unique<ChildProcess>(
        std::vector<std::string> { "trayer", "--edge", "top", "--align", "right", "--widthtype",
            "request", "--height", "24", "--tint", "0x303030", "--transparent", "true" },
        environment());
    waitUntil(m_display, "the tray", hasTray);
}

void PrivateXServer::stop()
{
    m_server->stop();
}

void PrivateXServer::resume()
{
    m_server->resume();
}

void PrivateXServer::kill()
{
    m_server->signal(SIGKILL);
    m_server->wait(milliseconds(5000));
}

ChildProcess::Environment PrivateXServer::environment() const
{
    return { { "DISPLAY", m_display }, { "WAYLAND_DISPLAY", "" }, { "XDG_SESSION_TYPE", "x11" },
        { "QT_QPA_PLATFORM", "xcb" } };
}

} // namespace kestrel::stage
