#include "bench/latency/AwakeCores.h"

#include <pthread.h>
#include <sched.h>
#include <signal.h>

#include <chrono>

namespace kestrel::bench {

namespace {
void stayOn(std::size_t core)
{
    cpu_set_t own;
    CPU_ZERO(&own);
    CPU_SET(core, &own);
    ::pthread_setaffinity_np(::pthread_self(), sizeof own, &own);
}
} // namespace

AwakeCores::AwakeCores()
{
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    ::sched_getaffinity(0, sizeof allowed, &allowed);
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before); // the main thread handles signals
    for (std::size_t core = 0; core < CPU_SETSIZE; ++core) {
        if (!CPU_ISSET(core, &allowed))
            continue;
        m_threads.emplace_back([this, core] { spin(core); });
        m_threads.emplace_back([this, core] { tick(core); });
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void AwakeCores::spin(std::size_t core)
{
    stayOn(core);
    const sched_param lowest {};
    if (::pthread_setschedparam(::pthread_self(), SCHED_IDLE, &lowest) != 0)
        return;
    while (m_awake.load(std::memory_order_relaxed)) { }
}

void AwakeCores::tick(std::size_t core)
{
    stayOn(core);
    while (m_awake.load(std::memory_order_relaxed))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

AwakeCores::~AwakeCores()
{
    m_awake = false;
    for (auto& thread : m_threads)
        thread.join();
}

} // namespace kestrel::bench
