#include "bench/latency/Interruption.h"

#include <atomic>
#include <csignal>

namespace kestrel::bench {

namespace {
std::atomic<bool> interrupted { false };
static_assert(std::atomic<bool>::is_always_lock_free);
} // namespace

Interruption::Interruption()
    : std::runtime_error("interrupted")
{
}

void Interruption::listen()
{
    struct sigaction action { };
    action.sa_handler = [](int) { interrupted = true; };
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

void Interruption::check()
{
    if (interrupted)
        throw Interruption();
}

} // namespace kestrel::bench
