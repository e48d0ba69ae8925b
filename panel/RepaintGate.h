#pragma once

#include <chrono>

namespace kestrel {

// Lets at most one repaint through per display refresh: the first at once, what comes too early
// later, all of it together.
class RepaintGate {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Delay = std::chrono::milliseconds;

    static constexpr std::chrono::microseconds Refresh { 16'667 };

    // How long a repaint asked for now has to wait.
    [[nodiscard]] Delay delay(TimePoint now) const
    {
        if (now >= m_nextPaint)
            return Delay::zero();
        return std::chrono::ceil<Delay>(m_nextPaint - now);
    }

    void painted(TimePoint now) { m_nextPaint = now + Refresh; }

private:
    TimePoint m_nextPaint {};
};

} // namespace kestrel
