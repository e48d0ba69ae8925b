#pragma once

#include "platform/MainLoop.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace kestrel {

// Calls `terminate` on the main thread after a signal that ends programs, so that this one ends in
// an orderly way. If the main thread does not come to that within PatienceSeconds, because Qt waits
// for an X server that has stopped, the process ends at once with exit code 1. A write to a closed
// pipe or beyond the limit of a file's size fails and ends nothing. At most one object exists at a
// time. After it none of these signals has an effect, so that one that is repeated while the
// program ends does not change its exit code.
class TerminationSignals {
public:
    static constexpr unsigned PatienceSeconds = 3;

    // Throws std::system_error when the process has no descriptors left.
    TerminationSignals(
        MainLoop& mainLoop, std::span<const int> numbers, std::function<void()> terminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    void handle(int number, void (*handler)(int));
    void readPending();

    std::function<void()> m_terminate;
    int m_readEnd = -1;
    int m_writeEnd = -1;
    std::unique_ptr<MainLoop::Watch> m_watch;
    std::vector<int> m_handled;
};

} // namespace kestrel
