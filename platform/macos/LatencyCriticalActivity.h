#pragma once

#include "platform/macos/CFHolder.h"

namespace kestrel {

// As long as it lives, the system neither naps this program, which is hardly ever in front, nor
// gathers its timers and wake-ups. The computer may still go to sleep.
class LatencyCriticalActivity {
public:
    LatencyCriticalActivity();
    ~LatencyCriticalActivity();
    LatencyCriticalActivity(const LatencyCriticalActivity&) = delete;
    LatencyCriticalActivity& operator=(const LatencyCriticalActivity&) = delete;

private:
    CFHolder<CFTypeRef> m_activity;
};

} // namespace kestrel
