#pragma once

#include "link/Clock.h"

namespace kestrel::test {

// A clock that stands still until the test advances it.
class ManualClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return m_now; }
    void advance(std::chrono::nanoseconds by) { m_now += by; }

private:
    TimePoint m_now { std::chrono::hours(1) };
};

} // namespace kestrel::test
