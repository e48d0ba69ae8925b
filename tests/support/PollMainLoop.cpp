#include "tests/support/PollMainLoop.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace kestrel::test {

class PollMainLoop::Registration final : public MainLoop::Watch {
public:
    Registration(std::list<Watched>& watched, std::list<Watched>::iterator place)
        : m_watched(watched)
        , m_place(place)
    {
    }
    ~Registration() override { m_watched.erase(m_place); }

private:
    std::list<Watched>& m_watched;
    const std::list<Watched>::iterator m_place;
};

PollMainLoop::PollMainLoop()
{
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    m_wakeUpReadEnd = ends[0];
    m_wakeUpWriteEnd = ends[1];
    for (const int end : ends)
        ::fcntl(end, F_SETFL, O_NONBLOCK);
}

PollMainLoop::~PollMainLoop()
{
    ::close(m_wakeUpReadEnd);
    ::close(m_wakeUpWriteEnd);
}

void PollMainLoop::perform(std::function<void()> task)
{
    const std::scoped_lock lock(m_mutex);
    m_tasks.push_back(std::move(task));
    const char byte = 0;
    // A full pipe wakes the loop as well.
    [[maybe_unused]] const auto written = ::write(m_wakeUpWriteEnd, &byte, 1);
}

std::unique_ptr<MainLoop::Watch> PollMainLoop::watch(int descriptor, std::function<void()> ready)
{
    m_watched.push_back({ descriptor, std::move(ready) });
    return std::make_unique<Registration>(m_watched, std::prev(m_watched.end()));
}

bool PollMainLoop::runUntil(const std::function<bool()>& holds, std::chrono::milliseconds timeout)
{
    const auto deadline = Clock::now() + timeout;
    while (!holds()) {
        if (Clock::now() >= deadline)
            return false;
        turn(deadline);
    }
    return true;
}

void PollMainLoop::runFor(std::chrono::milliseconds time)
{
    for (const auto deadline = Clock::now() + time; Clock::now() < deadline;)
        turn(deadline);
}

void PollMainLoop::turn(Clock::time_point deadline)
{
    std::vector<pollfd> descriptors { { m_wakeUpReadEnd, POLLIN, 0 } };
    for (const Watched& watched : m_watched)
        descriptors.push_back({ watched.descriptor, POLLIN, 0 });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    // Some conditions come true without a descriptor, so they are checked every few milliseconds.
    const int waitMs = static_cast<int>(std::clamp<long>(static_cast<long>(left.count()), 0, 5));
    if (::poll(descriptors.data(), static_cast<nfds_t>(descriptors.size()), waitMs) <= 0)
        return;
    ++m_turns;
    for (const pollfd& each : descriptors) {
        if (each.revents != 0 && each.fd != m_wakeUpReadEnd)
            callWatcherOf(each.fd);
    }
    runTasks();
}

// `ready` may end any watch, its own too.
void PollMainLoop::callWatcherOf(int descriptor)
{
    const auto found = std::find_if(m_watched.begin(), m_watched.end(),
        [descriptor](const Watched& each) { return each.descriptor == descriptor; });
    if (found != m_watched.end())
        std::function<void()>(found->ready)();
}

void PollMainLoop::runTasks()
{
    std::array<char, 64> bytes;
    while (::read(m_wakeUpReadEnd, bytes.data(), bytes.size()) > 0) { }
    std::vector<std::function<void()>> tasks;
    {
        const std::scoped_lock lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const auto& task : tasks)
        task();
}

} // namespace kestrel::test
