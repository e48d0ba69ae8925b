#pragma once

#include "link/Clock.h"

#include <string>

// Times of day in the user's time zone.
namespace kestrel::EventTime {

[[nodiscard]] std::string date(Clock::WallTime time); // such as 2026-11-22
[[nodiscard]] std::string seconds(Clock::WallTime time); // such as 18:04:31
[[nodiscard]] std::string milliseconds(Clock::WallTime time); // such as 18:04:31.482

} // namespace kestrel::EventTime
