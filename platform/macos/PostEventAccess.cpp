#include "platform/macos/PostEventAccess.h"

#include <ApplicationServices/ApplicationServices.h>

namespace kestrel {

PostEventAccess::PostEventAccess(MainLoop& mainLoop)
    : m_mainLoop(mainLoop)
{
    ask();
}

bool PostEventAccess::ask()
{
    m_renewing = false;
    m_askedAt = Clock::now();
    // The user can grant accessibility, which includes posting events, or posting events alone.
    m_granted = AXIsProcessTrusted() || CGPreflightPostEventAccess();
    return m_granted;
}

bool PostEventAccess::assumed()
{
    if (!m_granted)
        return ask();
    if (!m_renewing && Clock::now() - m_askedAt > std::chrono::seconds(1)) {
        m_renewing = true;
        m_mainLoop.perform([weak = weak_from_this()] {
            if (const auto access = weak.lock())
                access->ask();
        });
    }
    return true;
}

} // namespace kestrel
