#pragma once

#include "platform/MainLoop.h"

#include <functional>
#include <memory>

namespace kestrel {

// Calls `terminate` on the main thread after SIGTERM, SIGINT or SIGHUP, so that the program ends in
// an orderly way. At most one object exists at a time; its end restores the default handlers.
class TerminationSignals {
public:
    // Throws std::system_error when the process has no descriptors left.
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
