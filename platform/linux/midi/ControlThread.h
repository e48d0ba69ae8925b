#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace kestrel {

// Runs calls to a server that may never answer, one after the other, on a thread of its own. The
// caller never waits longer than the patience.
class ControlThread {
public:
    using Job = std::function<void()>;

    // `caughtUp` runs on the control thread when the last call that took longer than the patience
    // has ended.
    ControlThread(std::chrono::milliseconds patience, Job caughtUp);
    // Waits for the queued jobs, at most as long as the patience. A job that still hangs then ends
    // later by itself, so a job must own everything that it uses.
    ~ControlThread();
    ControlThread(const ControlThread&) = delete;
    ControlThread& operator=(const ControlThread&) = delete;

    // True when `work` has run within the patience. Otherwise `undo` runs once `work` has ended,
    // and until then every further call() returns false at once and runs nothing.
    [[nodiscard]] bool call(Job work, Job undo = {});
    // Queues `work` in any case. Waits for it like call(), but not while an earlier call is
    // overdue.
    void settle(Job work);
    // Queues `work` and returns at once.
    void post(Job work);

    [[nodiscard]] bool isBehind() const;

private:
    struct Task;
    struct State;

    [[nodiscard]] bool await(const std::shared_ptr<Task>& task);

    const std::chrono::milliseconds m_patience;
    const std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace kestrel
