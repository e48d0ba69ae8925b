#include "app/StoringNotice.h"

#include "assign/StoredAssignments.h"

#include <utility>

namespace kestrel {

StoringNotice::StoringNotice(
    const StoredAssignments& assignments, std::function<void()> tryAgain, Notices& others)
    : m_assignments(assignments)
    , m_tryAgain(std::move(tryAgain))
    , m_others(others)
{
}

std::vector<Notice> StoringNotice::current()
{
    std::vector<Notice> notices = m_others.current();
    if (const std::string& problem = m_assignments.problem(); !problem.empty())
        notices.insert(notices.begin(), { "Assignments Cannot Be Stored: " + problem, m_tryAgain });
    return notices;
}

} // namespace kestrel
