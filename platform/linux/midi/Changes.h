#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

namespace kestrel {

// Lets one thread wait for a condition. Other threads call happened() after each change that may
// make the condition true.
class Changes {
public:
    void happened();

    // Calls `holds` at once and after each change. True as soon as `holds` returns true, false when
    // it has not done so within `timeout`.
    [[nodiscard]] bool waitUntil(
        const std::function<bool()>& holds, std::chrono::milliseconds timeout);

private:
    std::mutex m_mutex;
    std::condition_variable m_happened;
    std::uint64_t m_count = 0;
};

} // namespace kestrel
