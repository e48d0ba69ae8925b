#include "platform/linux/midi/Pace.h"

#include <algorithm>

namespace kestrel {

void Pace::happened(TimePoint now)
{
    const bool isCalm = m_last == TimePoint::min() || now - m_last >= Calm;
    m_pause = isCalm ? ShortestPause : std::min(2 * m_pause, LongestPause);
    m_last = now;
    m_next = now + m_pause;
}

} // namespace kestrel
