#pragma once

#include "platform/linux/midi/Pace.h"
#include "platform/linux/midi/PortChanges.h"

namespace kestrel {

// Limits how often changes of ports are told, because the link is then rebuilt. The clients that
// the receiver relies on have a pace of their own, so that no other client can delay the return of
// a connection.
class ChangePace {
public:
    using TimePoint = PortChanges::TimePoint;

    // The earliest time at which one of the changes may be told, TimePoint::max() when there is
    // none.
    [[nodiscard]] TimePoint next(const PortChanges::Due& due) const;
    // Called after all changes were told. Only those that were due slow the pace down.
    void told(const PortChanges::Due& due, TimePoint now);

private:
    Pace m_familiar;
    Pace m_other;
};

} // namespace kestrel
