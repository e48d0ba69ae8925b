#pragma once

#include "platform/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kestrel {

// Knows whether this process may post keyboard events. Asking the system goes through another
// process, so a granted permission is cached and the path to a key does not wait for it. Main
// thread only.
class PostEventAccess : public std::enable_shared_from_this<PostEventAccess> {
public:
    using Clock = std::chrono::steady_clock;

    explicit PostEventAccess(
        MainLoop& mainLoop, std::function<Clock::time_point()> now = Clock::now);

    // Asks the system; shows nothing to the user.
    bool ask();

    // Uses the last answer if it was yes; when that is older than a second, it is renewed after
    // this call. A refusal is not cached, so a new grant counts at the next key.
    [[nodiscard]] bool assumed();

private:
    MainLoop& m_mainLoop;
    const std::function<Clock::time_point()> m_now;
    Clock::time_point m_askedAt;
    bool m_granted = false;
    bool m_renewing = false;
};

} // namespace kestrel
