#pragma once

#include <chrono>

namespace kestrel {

// Limits how often something happens that others can provoke without end. It may happen once at any
// time. As long as it goes on, the pause after each time is twice as long as the one before.
class Pace {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::milliseconds ShortestPause { 250 };
    static constexpr std::chrono::milliseconds LongestPause { 4000 };
    // After this time without an occurrence, the pauses begin anew.
    static constexpr std::chrono::milliseconds Calm { 10000 };

    // The earliest time of the next occurrence.
    [[nodiscard]] TimePoint next() const { return m_next; }
    void happened(TimePoint now);

private:
    std::chrono::milliseconds m_pause { 0 };
    TimePoint m_last = TimePoint::min();
    TimePoint m_next = TimePoint::min();
};

} // namespace kestrel
