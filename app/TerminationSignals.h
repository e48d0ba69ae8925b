#pragma once

#include "platform/MainLoop.h"

#include <functional>
#include <memory>

namespace kestrel {

// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that the program ends in an
// orderly way. At most one object at a time; the signals have their old meaning again after it.
class TerminationSignals {
public:
    // Throws std::system_error when the system has no descriptors left.
    TerminationSignals(MainLoop& mainLoop, std::function<void()> terminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    void readPending();

    std::function<void()> m_terminate;
    int m_readEnd = -1;
    int m_writeEnd = -1;
    std::unique_ptr<MainLoop::Watch> m_watch;
};

} // namespace kestrel
