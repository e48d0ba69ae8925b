#pragma once

#include <chrono>

namespace kestrel {

// Limits repaints to one per display refresh. The first one may happen at once; requests that come
// too early wait and are painted together.
class RepaintGate {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Delay = std::chrono::milliseconds;

    static constexpr std::chrono::microseconds Refresh { 16'667 };

    // The time that a repaint requested at `now` has to wait.
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
