#include "platform/macos/PostEventAccess.h"

#include <ApplicationServices/ApplicationServices.h>

#include <utility>

namespace kestrel {

PostEventAccess::PostEventAccess(MainLoop& mainLoop, std::function<Clock::time_point()> now)
    : m_mainLoop(mainLoop)
    , m_now(std::move(now))
{
    ask();
}

bool PostEventAccess::ask()
{
    m_renewing = false;
    m_askedAt = m_now();
    // The user can grant accessibility, which includes posting events, or posting events alone.
    m_granted = AXIsProcessTrusted() || CGPreflightPostEventAccess();
    return m_granted;
}

bool PostEventAccess::assumed()
{
    if (!m_granted)
        return ask();
    if (!m_renewing && m_now() - m_askedAt > std::chrono::seconds(1)) {
        m_renewing = true;
        m_mainLoop.perform([weak = weak_from_this()] {
            if (const auto access = weak.lock())
                access->ask();
        });
    }
    return true;
}

} // namespace kestrel
