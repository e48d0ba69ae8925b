#pragma once

#include "platform/macos/CFHolder.h"

namespace kestrel {

// As long as it lives, the system does not nap this program, which is hardly ever in front. The
// computer may still go to sleep.
class Activity {
public:
    enum class Kind {
        PunctualTimers,
        LatencyCritical, // neither timers nor wake-ups are gathered
    };

    explicit Activity(Kind kind);
    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

private:
    CFHolder<CFTypeRef> m_activity;
};

} // namespace kestrel
