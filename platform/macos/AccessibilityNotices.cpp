#include "platform/macos/AccessibilityNotices.h"

#include "platform/macos/AccessibilityPermissions.h"

namespace kestrel {

AccessibilityNotices::AccessibilityNotices(std::shared_ptr<PostEventAccess> access)
    : m_access(std::move(access))
{
}

std::vector<Notice> AccessibilityNotices::current()
{
    if (m_access->ask())
        return {};
    return { { "Keys Need the Accessibility Permission…",
        [access = m_access] { AccessibilityPermissions(access).requestKeyEvents(); } } };
}

} // namespace kestrel
