#include "platform/linux/facts/DisplayFacts.h"

#include "platform/IdleLoop.h"
#include "platform/Workstation.h"
#include "platform/linux/facts/TrayFacts.h"
#include "platform/linux/system/ProcProcessTable.h"
#include "platform/linux/system/SessionNotices.h"
#include "platform/linux/x11/FrontApplication.h"
#include "platform/linux/x11/X11Atoms.h"

#include <cstdlib>

namespace kestrel {

namespace {
constexpr std::uint32_t MaxWindows = 4096;

std::string environmentValue(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

bool belongsToWorkstation(X11Connection& connection, xcb_window_t window, xcb_atom_t processAtom)
{
    const auto process = X11Atoms::words(connection, window, processAtom, 1);
    return !process.empty()
        && ProcProcessTable::commandNameOf(process.front()) == Workstation::Name;
}

// The window manager lists the windows.
std::optional<std::vector<std::string>> workstationWindows(
    X11Connection& connection, const FrontApplication& front)
{
    const xcb_atom_t list = X11Atoms::intern(connection, "_NET_CLIENT_LIST");
    const xcb_atom_t process = X11Atoms::intern(connection, "_NET_WM_PID");
    const auto windows = X11Atoms::words(connection, connection.screen().root, list, MaxWindows);
    if (windows.empty())
        return {};
    std::vector<std::string> classes;
    for (const xcb_window_t window : windows) {
        const auto name = front.classOf(window);
        if (name
            && (name == Workstation::Name || belongsToWorkstation(connection, window, process)))
            classes.push_back(*name);
    }
    return classes;
}

XKeySet keysDown(X11Connection& connection)
{
    const auto reply
        = connection.reply<xcb_query_keymap_reply_t>(xcb_query_keymap(connection.xcb()).sequence);
    XKeySet keys;
    for (std::size_t key = 0; reply && key < keys.size(); ++key)
        keys.set(key, (reply->keys[key / 8] >> (key % 8) & 1) != 0);
    return keys;
}
} // namespace

DisplayFacts displayFacts()
{
    DisplayFacts all;
    SystemFacts::Display& facts = all.display;
    facts.session = SessionNotices::sessionOfEnvironment() == SessionNotices::Session::Wayland
        ? SystemFacts::Session::Wayland
        : SystemFacts::Session::X11;
    facts.name = environmentValue("DISPLAY");
    facts.qtPlugin = environmentValue("QT_QPA_PLATFORM");

    IdleLoop loop;
    X11Connection connection(loop);
    const FrontApplication front(connection);
    facts.answers = connection.ensureOpen();
    if (!facts.answers)
        return all;
    facts.front = front.name();
    facts.hasTray = hasTray(connection);
    facts.workstationWindows = workstationWindows(connection, front);
    all.keysDown = keysDown(connection);
    return all;
}

} // namespace kestrel
