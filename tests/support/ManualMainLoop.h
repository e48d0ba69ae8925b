#pragma once

#include "platform/MainLoop.h"

#include <deque>
#include <map>
#include <mutex>

namespace kestrel::test {

// A main loop that runs its tasks only when the test calls turn().
class ManualMainLoop final : public MainLoop {
public:
    void perform(std::function<void()> task) override
    {
        const std::scoped_lock lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }

    [[nodiscard]] std::unique_ptr<Watch> watch(int, std::function<void()>) override
    {
        return std::make_unique<Watch>();
    }

    // Runs all tasks, also those that tasks perform. Returns their number.
    int turn()
    {
        int count = 0;
        while (auto task = next()) {
            task();
            ++count;
        }
        return count;
    }

private:
    std::function<void()> next()
    {
        const std::scoped_lock lock(m_mutex);
        if (m_tasks.empty())
            return {};
        auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        return task;
    }

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace kestrel::test
