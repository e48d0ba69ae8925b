#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/midi/Wakeup.h"

#include <poll.h>

#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace kestrel {

// A main loop for tests: runs on the test's own thread, only while runUntil() is called.
class PollMainLoop final : public MainLoop {
public:
    using Clock = std::chrono::steady_clock;

    void perform(std::function<void()> task) override
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
        m_wakeup.raise();
    }

    [[nodiscard]] std::unique_ptr<Watch> watch(int descriptor, std::function<void()> ready) override
    {
        m_watched.push_back({ descriptor, std::move(ready) });
        return std::make_unique<Registration>(m_watched, std::prev(m_watched.end()));
    }

    // True as soon as the condition holds, which is asked before every wait.
    bool runUntil(const std::function<bool()>& holds, std::chrono::milliseconds timeout)
    {
        const auto deadline = Clock::now() + timeout;
        while (!holds()) {
            const auto left
                = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
            if (left <= 0)
                return false;
            runOnce(static_cast<int>(left));
        }
        return true;
    }

    // How often it has woken up; a program that does nothing does not wake up.
    [[nodiscard]] int turns() const { return m_turns; }

private:
    struct Watched {
        int descriptor;
        std::function<void()> ready;
    };
    using Watches = std::list<Watched>;

    class Registration final : public Watch {
    public:
        Registration(Watches& watches, Watches::iterator place)
            : m_watches(watches)
            , m_place(place)
        {
        }
        ~Registration() override { m_watches.erase(m_place); }

    private:
        Watches& m_watches;
        const Watches::iterator m_place;
    };

    void runOnce(int timeoutMs)
    {
        std::vector<pollfd> descriptors { { m_wakeup.descriptor(), POLLIN, 0 } };
        for (const Watched& watched : m_watched)
            descriptors.push_back({ watched.descriptor, POLLIN, 0 });
        if (::poll(descriptors.data(), descriptors.size(), timeoutMs) <= 0)
            return;
        ++m_turns;
        for (const pollfd& descriptor : descriptors) {
            if (descriptor.revents != 0)
                callWatcherOf(descriptor.fd);
        }
        runTasks();
    }

    void callWatcherOf(int descriptor)
    {
        for (const Watched& watched : m_watched) {
            if (watched.descriptor == descriptor) {
                const auto ready = watched.ready;
                ready();
                return;
            }
        }
    }

    void runTasks()
    {
        m_wakeup.lower();
        std::vector<std::function<void()>> tasks;
        {
            const std::lock_guard lock(m_mutex);
            tasks.swap(m_tasks);
        }
        for (const auto& task : tasks)
            task();
    }

    Wakeup m_wakeup;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_tasks;
    Watches m_watched;
    int m_turns = 0;
};

} // namespace kestrel
