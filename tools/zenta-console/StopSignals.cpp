#include "tools/zenta-console/StopSignals.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace kestrel::console {

namespace {
int pipeEnds[2] = { -1, -1 };

extern "C" void stopSignalArrived(int)
{
    const int before = errno;
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], "", 1);
    errno = before;
}
} // namespace

int stopSignals()
{
    if (::pipe(pipeEnds) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    struct sigaction action { };
    action.sa_handler = stopSignalArrived;
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
    return pipeEnds[0];
}

} // namespace kestrel::console
