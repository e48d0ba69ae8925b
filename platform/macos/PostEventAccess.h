#pragma once

#include "platform/MainLoop.h"

#include <chrono>
#include <memory>

namespace kestrel {

// Whether the user lets this process post keyboard events, kept current at no cost to the way of a
// key: the system answers that question through another process. Main thread only.
class PostEventAccess : public std::enable_shared_from_this<PostEventAccess> {
public:
    explicit PostEventAccess(MainLoop& mainLoop);

    // Asks the system; shows nothing to the user.
    bool ask();

    // A permission is taken from the last answer, which is renewed after the caller is done once it
    // is older than a second. A refusal is never remembered: a grant counts at the next key.
    [[nodiscard]] bool assumed();

private:
    using Clock = std::chrono::steady_clock;

    MainLoop& m_mainLoop;
    Clock::time_point m_askedAt;
    bool m_granted = false;
    bool m_renewing = false;
};

} // namespace kestrel
