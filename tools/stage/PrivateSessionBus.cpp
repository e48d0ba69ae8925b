#include "tools/stage/PrivateSessionBus.h"

#include <stdexcept>

namespace kestrel::stage {

namespace {
constexpr milliseconds StartTimeout { 20000 };
}

PrivateSessionBus::PrivateSessionBus(const ChildProcess::Environment& environment)
    : m_daemon(
        { "dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address" }, environment)
{
    const auto address
        = m_daemon.waitForLine([](std::string_view line) { return !line.empty(); }, StartTimeout);
    if (!address)
        throw std::runtime_error("the D-Bus session bus does not start");
    m_address = *address;
}

} // namespace kestrel::stage
