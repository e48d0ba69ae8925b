#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace kestrel {

// Runs the calls that a silent server may hold up for ever, one after the other, on a thread of
// its own, so that the caller need never wait longer than its patience.
class ControlThread {
public:
    using Job = std::function<void()>;

    // `caughtUp` is called on the control thread when the last call that nobody waited for any
    // longer has ended.
    ControlThread(std::chrono::milliseconds patience, Job caughtUp);
    // Waits for what is queued, at most as long as the patience; what still hangs then ends on its
    // own, so jobs must own all that they use.
    ~ControlThread();
    ControlThread(const ControlThread&) = delete;
    ControlThread& operator=(const ControlThread&) = delete;

    // True when `work` has run. False when patience ran out: then `undo` runs after `work`
    // whenever that ends, and until then every further call is false at once and does not run.
    [[nodiscard]] bool call(Job work, Job undo = {});
    // Runs `work` in any case; waits for it as call() does.
    void settle(Job work);
    // Never waits.
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
