#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace kestrel::bench {

// Keeps every core from sleeping while it lives: one thread a core counts at SCHED_IDLE, the class
// below any nice value. Whatever is measured preempts it at once, but never waits for a core to
// wake up, which on a virtual machine takes longer than the thing measured and varies more.
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
