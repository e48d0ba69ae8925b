#include "app/KeyPermission.h"

#include <utility>

namespace kestrel {

KeyPermission::KeyPermission(Permissions& system, Notices& session)
    : m_system(system)
    , m_session(session)
{
}

void KeyPermission::requestKeyEvents()
{
    if (!std::exchange(m_requested, true))
        m_system.requestKeyEvents();
}

std::vector<Notice> KeyPermission::current()
{
    std::vector<Notice> notices = m_session.current();
    if (m_system.mayPostKeyEvents())
        return notices;
    // The system's question offers the settings too, and adds the program to their list.
    const auto act = [this] { m_requested ? showKeyEventSettings() : requestKeyEvents(); };
    notices.insert(notices.begin(), { "Keys Need the Accessibility Permission…", act });
    return notices;
}

} // namespace kestrel
