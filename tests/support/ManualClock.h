#pragma once

#include "link/Clock.h"

namespace kestrel::test {

// A clock that stands still until the test advances it.
class ManualClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return m_now; }
    // 1:00 of 1 January 1970 in UTC when the test begins.
    [[nodiscard]] WallTime wallTime() const override
    {
        return WallTime(std::chrono::duration_cast<WallTime::duration>(m_now.time_since_epoch()));
    }
    void advance(std::chrono::nanoseconds by) { m_now += by; }

private:
    TimePoint m_now { std::chrono::hours(1) };
};

} // namespace kestrel::test
