#include "activity/ActivityLog.h"

namespace kestrel {

ActivityLog::ActivityLog()
    : m_events(Capacity)
{
}

void ActivityLog::record(const ActivityEvent& event)
{
    m_events[m_count % Capacity] = event;
    ++m_count;
}

const ActivityEvent& ActivityLog::event(std::uint64_t number) const
{
    return m_events[number % Capacity];
}

} // namespace kestrel
