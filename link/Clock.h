#pragma once

#include <chrono>

namespace kestrel {

// Gives the current time. Tests substitute a clock that they move by hand.
class Clock {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using WallTime = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;

    [[nodiscard]] virtual TimePoint now() const = 0;
    // The time of day. It jumps when somebody sets it, and goes on while the computer sleeps.
    [[nodiscard]] virtual WallTime wallTime() const = 0;
};

class SteadyClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return std::chrono::steady_clock::now(); }
    [[nodiscard]] WallTime wallTime() const override { return std::chrono::system_clock::now(); }
};

} // namespace kestrel
