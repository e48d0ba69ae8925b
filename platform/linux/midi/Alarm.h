#pragma once

#include <chrono>

namespace kestrel {

// A descriptor that becomes readable at a given time. Main thread only.
class Alarm {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    Alarm(); // throws std::system_error
    ~Alarm();
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;

    // The last call counts. A time in the past is now, and TimePoint::max() is never.
    void set(TimePoint time);
    // The descriptor is not readable from here until the alarm is set again.
    void lower();

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

} // namespace kestrel
