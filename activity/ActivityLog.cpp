#include "activity/ActivityLog.h"

#include <algorithm>

namespace kestrel {

ActivityLog::ActivityLog()
    : m_events(Capacity)
{
}

void ActivityLog::record(const ActivityEvent& event)
{
    m_events[m_count % Capacity] = event;
    ++m_count;
    m_first = std::max(m_first, m_count > Capacity ? m_count - Capacity : 0);
}

void ActivityLog::clear()
{
    m_first = m_count;
}

const ActivityEvent& ActivityLog::event(std::uint64_t number) const
{
    return m_events[number % Capacity];
}

} // namespace kestrel
