#pragma once

#include "platform/macos/CFHolder.h"

namespace kestrel {

// Keeps App Nap away from this program, which is hardly ever in front, for as long as the object
// lives. The computer may still go to sleep.
class Activity {
public:
    enum class Kind {
        PunctualTimers,
        LatencyCritical, // the system does not coalesce timers and wake-ups either
    };

    explicit Activity(Kind kind);
    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

private:
    CFHolder<CFTypeRef> m_activity;
};

} // namespace kestrel
