#include "platform/linux/midi/Pace.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

constexpr Pace::TimePoint FirstTime { 1h };

// Lets it happen as often as it may during `time`, and returns the pauses in between.
std::vector<milliseconds> pausesIn(Pace& pace, milliseconds time)
{
    std::vector<milliseconds> pauses;
    for (auto now = FirstTime; now < FirstTime + time;) {
        pace.happened(now);
        pauses.push_back(std::chrono::duration_cast<milliseconds>(pace.next() - now));
        now = pace.next();
    }
    return pauses;
}

TEST(Pace, the_first_time_waits_for_nothing)
{
    EXPECT_LE(Pace().next(), FirstTime);
}

TEST(Pace, each_pause_is_twice_as_long_as_the_one_before_up_to_the_longest)
{
    Pace pace;
    EXPECT_EQ(
        pausesIn(pace, 15s), (std::vector<milliseconds> { 250ms, 500ms, 1s, 2s, 4s, 4s, 4s }));
}

TEST(Pace, begins_anew_after_a_time_of_calm)
{
    Pace pace;
    pausesIn(pace, 10s);
    const auto last = pace.next() - Pace::LongestPause;
    pace.happened(last + Pace::Calm - 1ms);
    EXPECT_EQ(pace.next(), last + Pace::Calm - 1ms + 4s);
    const auto later = last + 2 * Pace::Calm;
    pace.happened(later);
    EXPECT_EQ(pace.next(), later + 250ms);
}

} // namespace
} // namespace kestrel::test
