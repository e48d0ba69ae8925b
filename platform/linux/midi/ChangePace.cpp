#include "platform/linux/midi/ChangePace.h"

#include <algorithm>

namespace kestrel {

ChangePace::TimePoint ChangePace::next(const PortChanges::Due& due) const
{
    return std::min(std::max(due.familiar, m_familiar.next()), std::max(due.other, m_other.next()));
}

void ChangePace::told(const PortChanges::Due& due, TimePoint now)
{
    if (due.familiar <= now)
        m_familiar.happened(now);
    if (due.other <= now)
        m_other.happened(now);
}

} // namespace kestrel
