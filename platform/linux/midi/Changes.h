#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

namespace kestrel {

// Lets one thread wait for something that can only come true when another says that there was a
// change.
class Changes {
public:
    void happened();

    // False when `holds`, which is asked first and after each change, never said so in time.
    [[nodiscard]] bool waitUntil(
        const std::function<bool()>& holds, std::chrono::milliseconds timeout);

private:
    std::mutex m_mutex;
    std::condition_variable m_happened;
    std::uint64_t m_count = 0;
};

} // namespace kestrel
