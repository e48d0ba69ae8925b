#include "platform/linux/midi/Changes.h"

namespace kestrel {

void Changes::happened()
{
    const std::lock_guard lock(m_mutex);
    ++m_count;
    m_happened.notify_all();
}

bool Changes::waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    std::unique_lock lock(m_mutex);
    for (;;) {
        const std::uint64_t seen = m_count;
        lock.unlock(); // holds() may take long
        if (holds())
            return true;
        lock.lock();
        if (!m_happened.wait_until(lock, deadline, [this, seen] { return m_count != seen; }))
            return false;
    }
}

} // namespace kestrel
