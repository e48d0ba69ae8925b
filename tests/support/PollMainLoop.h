#pragma once

#include "platform/MainLoop.h"

#include <chrono>
#include <list>
#include <mutex>
#include <vector>

namespace kestrel::test {

// A main loop on poll(). It runs on the test's own thread, and only while the test waits.
class PollMainLoop final : public MainLoop {
public:
    using Clock = std::chrono::steady_clock;

    PollMainLoop();
    ~PollMainLoop() override;
    PollMainLoop(const PollMainLoop&) = delete;
    PollMainLoop& operator=(const PollMainLoop&) = delete;

    void perform(std::function<void()> task) override;
    [[nodiscard]] std::unique_ptr<Watch> watch(
        int descriptor, std::function<void()> ready) override;

    // Runs until the condition holds; false when that takes longer than the timeout.
    bool runUntil(const std::function<bool()>& holds,
        std::chrono::milliseconds timeout = std::chrono::seconds(10));
    // Runs for as long as given, whatever happens.
    void runFor(std::chrono::milliseconds time);

    // How often a task or a descriptor has woken the loop; a program that does nothing wakes
    // nobody.
    [[nodiscard]] int turns() const { return m_turns; }

private:
    struct Watched {
        int descriptor;
        std::function<void()> ready;
    };
    class Registration;

    void turn(Clock::time_point deadline);
    void callWatcherOf(int descriptor);
    void runTasks();

    int m_wakeUpReadEnd = -1; // a pipe
    int m_wakeUpWriteEnd = -1;
    std::mutex m_mutex;
    std::list<Watched> m_watched; // outlives the tasks: one that never runs may own a watch
    std::vector<std::function<void()>> m_tasks; // guarded by m_mutex
    int m_turns = 0;
};

} // namespace kestrel::test
