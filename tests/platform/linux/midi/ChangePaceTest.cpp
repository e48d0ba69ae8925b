#include "platform/linux/midi/ChangePace.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using Due = PortChanges::Due;

constexpr PortChanges::TimePoint Start { 1h };
constexpr auto Never = PortChanges::TimePoint::max();

// Tells changes of one kind as often as their pace allows. Returns the last time.
PortChanges::TimePoint tellOften(ChangePace& pace, Due due)
{
    auto now = Start;
    for (int i = 0; i < 6; ++i) {
        now = std::max(now, pace.next(due));
        pace.told(due, now);
    }
    return now;
}

TEST(ChangePace, nothing_due_is_never_told)
{
    EXPECT_EQ(ChangePace().next({}), Never);
}

TEST(ChangePace, what_is_due_is_told_then)
{
    EXPECT_EQ(ChangePace().next({ .familiar = Start, .other = Start + 1s }), Start);
    EXPECT_EQ(ChangePace().next({ .familiar = Start + 1s, .other = Start }), Start);
}

TEST(ChangePace, other_clients_do_not_hold_up_familiar_ones)
{
    ChangePace pace;
    const auto last = tellOften(pace, { .other = Start });
    EXPECT_EQ(pace.next({ .other = last }), last + Pace::LongestPause);
    EXPECT_EQ(pace.next({ .familiar = last, .other = last }), last);
}

TEST(ChangePace, familiar_clients_that_change_all_the_time_are_held_up)
{
    ChangePace pace;
    const auto last = tellOften(pace, { .familiar = Start });
    EXPECT_EQ(pace.next({ .familiar = last }), last + Pace::LongestPause);
}

// The link has been rebuilt with what was due, so both kinds have had their turn.
TEST(ChangePace, what_was_told_together_counts_for_both)
{
    ChangePace pace;
    pace.told({ .familiar = Start, .other = Start }, Start);
    EXPECT_EQ(pace.next({ .familiar = Start }), Start + Pace::ShortestPause);
    EXPECT_EQ(pace.next({ .other = Start }), Start + Pace::ShortestPause);
}

} // namespace
} // namespace kestrel::test
