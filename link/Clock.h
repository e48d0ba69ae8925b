#pragma once

#include <chrono>

namespace kestrel {

// Gives the current time. Tests substitute a clock that they move by hand.
class Clock {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~Clock() = default;

    [[nodiscard]] virtual TimePoint now() const = 0;
};

class SteadyClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return std::chrono::steady_clock::now(); }
};

} // namespace kestrel
