#include "tests/linux/x11/PollLoop.h"

#include <poll.h>

#include <algorithm>
#include <vector>

namespace kestrel::test {

using Clock = std::chrono::steady_clock;

struct PollLoop::Registration final : MainLoop::Watch {
    Registration(std::list<Entry>& entries, std::list<Entry>::iterator entry)
        : m_entries(entries)
        , m_entry(entry)
    {
    }
    ~Registration() override { m_entries.erase(m_entry); }

    std::list<Entry>& m_entries;
    std::list<Entry>::iterator m_entry;
};

std::unique_ptr<MainLoop::Watch> PollLoop::watch(int descriptor, std::function<void()> ready)
{
    m_entries.push_back({ descriptor, std::move(ready) });
    return std::make_unique<Registration>(m_entries, std::prev(m_entries.end()));
}

bool PollLoop::runUntil(const std::function<bool()>& holds)
{
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (!holds()) {
        if (Clock::now() >= deadline)
            return false;
        turn(deadline);
    }
    return true;
}

void PollLoop::runFor(std::chrono::milliseconds time)
{
    for (const auto deadline = Clock::now() + time; Clock::now() < deadline;)
        turn(deadline);
}

void PollLoop::turn(Clock::time_point deadline)
{
    while (!m_tasks.empty()) {
        const auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        task();
    }
    std::vector<pollfd> descriptors;
    for (const Entry& entry : m_entries)
        descriptors.push_back({ entry.descriptor, POLLIN, 0 });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    // A condition that no watched descriptor tells of is looked at every few milliseconds.
    const int wait = static_cast<int>(std::clamp<long>(left.count(), 0, 5));
    if (::poll(descriptors.data(), descriptors.size(), wait) <= 0)
        return;
    for (const pollfd& descriptor : descriptors) {
        const auto entry = std::ranges::find(m_entries, descriptor.fd, &Entry::descriptor);
        if (descriptor.revents != 0 && entry != m_entries.end())
            std::function<void()>(entry->ready)();
    }
}

} // namespace kestrel::test
