#include "platform/linux/system/SessionNotices.h"

#include <cstdlib>
#include <string_view>

namespace kestrel {

namespace {
std::string_view environmentValue(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? std::string_view(value) : std::string_view();
}
} // namespace

SessionNotices::SessionNotices(Session session)
    : m_session(session)
{
}

std::vector<Notice> SessionNotices::current()
{
    if (m_session == Session::X11)
        return {};
    return {
        { "Wayland: keys reach X11 programs only", {} },
        { "Wayland: the panel cannot be kept on top", {} },
    };
}

SessionNotices::Session SessionNotices::sessionOfEnvironment()
{
    const bool isWayland = environmentValue("XDG_SESSION_TYPE") == "wayland"
        || !environmentValue("WAYLAND_DISPLAY").empty();
    return isWayland ? Session::Wayland : Session::X11;
}

} // namespace kestrel
