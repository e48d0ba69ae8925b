#pragma once

#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

namespace kestrel::bench {

// Keeps every core awake while this object exists: one thread per core spins at SCHED_IDLE, the
// class below any nice value. A measured program preempts that thread at once and never waits for a
// core to wake up, which on a virtual machine takes longer than the measured time and varies more.
// On a virtual machine, timers are late on a core that only spins (JACK missed about 50 cycles of
// 5,000), so a second thread per core, of normal priority, sets a timer each millisecond.
class AwakeCores {
public:
    AwakeCores();
    ~AwakeCores();
    AwakeCores(const AwakeCores&) = delete;
    AwakeCores& operator=(const AwakeCores&) = delete;

private:
    void spin(std::size_t core);
    void tick(std::size_t core);

    std::atomic<bool> m_awake { true };
    std::vector<std::thread> m_threads;
};

} // namespace kestrel::bench
