#pragma once

#include "app/InstanceServer.h"
#include "control/StatusReport.h"

namespace kestrel {

class AppDelegate;
class Clock;
struct Platform;

// Answers what other programs of the user, such as kestrelctl, ask the running program. Main thread
// only.
class InstanceRequests {
public:
    // All of them outlive this object.
    InstanceRequests(Platform& platform, AppDelegate& delegate, const Clock& clock);

    [[nodiscard]] InstanceReply answer(const InstanceMessage& request) const;

private:
    [[nodiscard]] StatusReport report() const;
    void reportLink(StatusReport& report) const;

    Platform& m_platform;
    AppDelegate& m_delegate;
    const Clock& m_clock;
};

} // namespace kestrel
