#include "platform/linux/facts/TrayFacts.h"

#include "platform/linux/x11/X11Atoms.h"

#include <QByteArray>
#include <QProcess>

namespace kestrel {

namespace {
constexpr int TrayQueryTimeoutMs = 3000;

// The number at the end of a name such as ":1.0"; Qt looks for the tray of this screen.
std::string screenOf(const std::string& display)
{
    const auto point = display.find('.', display.rfind(':'));
    return point == std::string::npos ? "0" : display.substr(point + 1);
}

bool hasX11Tray(X11Connection& connection)
{
    const xcb_atom_t tray
        = X11Atoms::intern(connection, "_NET_SYSTEM_TRAY_S" + screenOf(connection.displayName()));
    if (tray == XCB_ATOM_NONE)
        return false;
    const auto owner = connection.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection.xcb(), tray).sequence);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

// A process of its own asks, because a bus that stands still would block its asker.
std::optional<bool> hasNotifierHost()
{
    // Without an address, the tool would start a bus.
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return false;
    QProcess query;
    query.start("dbus-send",
        { "--session", "--print-reply=literal", "--reply-timeout=2000",
            "--dest=org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
            "org.freedesktop.DBus.Properties.Get", "string:org.kde.StatusNotifierWatcher",
            "string:IsStatusNotifierHostRegistered" });
    if (!query.waitForFinished(TrayQueryTimeoutMs) || query.exitStatus() != QProcess::NormalExit)
        return {};
    return query.readAllStandardOutput().contains("boolean true");
}
} // namespace

std::optional<bool> hasTray(X11Connection& connection)
{
    return hasX11Tray(connection) ? true : hasNotifierHost();
}

} // namespace kestrel
