#pragma once

#include "platform/MainLoop.h"

#include <chrono>
#include <deque>
#include <list>

namespace kestrel::test {

// A main loop without a toolkit.
class PollLoop final : public MainLoop {
public:
    void perform(std::function<void()> task) override { m_tasks.push_back(std::move(task)); }
    std::unique_ptr<Watch> watch(int descriptor, std::function<void()> ready) override;

    // Runs until the condition holds; false when that takes longer than ten seconds.
    bool runUntil(const std::function<bool()>& holds);
    // Runs for as long as given, whatever happens.
    void runFor(std::chrono::milliseconds time);

private:
    struct Entry {
        int descriptor;
        std::function<void()> ready;
    };
    struct Registration;

    void turn(std::chrono::steady_clock::time_point deadline);

    std::list<Entry> m_entries;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace kestrel::test
