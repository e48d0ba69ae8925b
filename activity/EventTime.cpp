#include "activity/EventTime.h"

#include <time.h>

#include <array>
#include <chrono>
#include <cstdio>

namespace kestrel {

namespace {
std::string formatted(const char* format, Clock::WallTime time)
{
    const std::time_t whole
        = Clock::WallTime::clock::to_time_t(std::chrono::floor<std::chrono::seconds>(time));
    std::tm local {};
    ::localtime_r(&whole, &local);
    std::array<char, 32> text {};
    return { text.data(), std::strftime(text.data(), text.size(), format, &local) };
}
} // namespace

std::string EventTime::date(Clock::WallTime time)
{
    return formatted("%Y-%m-%d", time);
}

std::string EventTime::seconds(Clock::WallTime time)
{
    return formatted("%H:%M:%S", time);
}

std::string EventTime::milliseconds(Clock::WallTime time)
{
    using std::chrono::milliseconds;
    const auto past
        = std::chrono::floor<milliseconds>(time) - std::chrono::floor<std::chrono::seconds>(time);
    std::array<char, 8> text {};
    std::snprintf(text.data(), text.size(), ".%03d", static_cast<int>(past.count()));
    return seconds(time) + text.data();
}

} // namespace kestrel
