#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace kestrel::bench {

// Keeps every core awake while this object exists: one thread per core spins at SCHED_IDLE, the
// class below any nice value. A measured program preempts that thread at once and never waits for a
// core to wake up, which on a virtual machine takes longer than the measured time and varies more.
class AwakeCores {
public:
    AwakeCores();
    ~AwakeCores();
    AwakeCores(const AwakeCores&) = delete;
    AwakeCores& operator=(const AwakeCores&) = delete;

private:
    std::atomic<bool> m_awake { true };
    std::vector<std::thread> m_threads;
};

} // namespace kestrel::bench
