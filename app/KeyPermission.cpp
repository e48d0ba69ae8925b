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

// The system's question offers the settings too, and adds the program to their list.
void KeyPermission::offer()
{
    if (m_requested)
        showKeyEventSettings();
    else
        requestKeyEvents();
}

std::vector<Notice> KeyPermission::current()
{
    std::vector<Notice> notices = m_session.current();
    if (m_system.mayPostKeyEvents())
        return notices;
    notices.insert(
        notices.begin(), { "Keys Need the Accessibility Permission…", [this] { offer(); } });
    return notices;
}

} // namespace kestrel
