#pragma once

#include "platform/macos/CFHolder.h"
#include "platform/macos/LatestTask.h"

#include <cstdint>
#include <functional>

namespace kestrel {

// Handles an Apple event of the core class in AppKit's place. Main thread only.
class AppleEventHandler {
public:
    explicit AppleEventHandler(std::uint32_t eventID)
        : m_eventID(eventID)
    {
    }
    ~AppleEventHandler() { setAct({}); }
    AppleEventHandler(const AppleEventHandler&) = delete;
    AppleEventHandler& operator=(const AppleEventHandler&) = delete;

    // Takes effect when the main queue runs next: AppKit installs its own handlers when it starts.
    // An empty function ends the handling.
    void setAct(std::function<void()> act);

private:
    std::uint32_t m_eventID;
    CFHolder<CFTypeRef> m_handler; // the event manager does not retain it
    LatestTask m_installation;
};

} // namespace kestrel
