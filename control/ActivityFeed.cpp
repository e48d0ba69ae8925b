#include "control/ActivityFeed.h"

#include "activity/ActivityLog.h"
#include "control/ActivityLine.h"

#include <algorithm>

namespace kestrel {

ActivityFeed::ActivityFeed(const ActivityLog& log)
    : m_log(log)
    , m_next(log.first())
{
}

QByteArray ActivityFeed::next()
{
    QByteArray lines;
    if (const std::uint64_t lost = m_log.first() - std::min(m_next, m_log.first()); lost > 0) {
        lines = droppedLine(lost) + '\n';
        m_next = m_log.first();
    }
    const std::uint64_t end = std::min(m_log.count(), m_next + EventsInOneBatch);
    for (; m_next < end; ++m_next)
        lines += ActivityLine { m_next, m_log.event(m_next) }.toJson() + '\n';
    return lines;
}

} // namespace kestrel
