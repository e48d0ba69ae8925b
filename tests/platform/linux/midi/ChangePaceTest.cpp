#include "platform/linux/midi/ChangePace.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using Due = PortChanges::Due;

constexpr PortChanges::TimePoint FirstChange { 1h };
constexpr auto NotDue = PortChanges::TimePoint::max();

// Tells changes of one kind as often as their pace allows. Returns the last time.
PortChanges::TimePoint tellOften(ChangePace& pace, Due due)
{
    auto now = FirstChange;
    for (int i = 0; i < 6; ++i) {
        now = std::max(now, pace.next(due));
        pace.told(due, now);
    }
    return now;
}

TEST(ChangePace, nothing_due_is_never_told)
{
    EXPECT_EQ(ChangePace().next({}), NotDue);
}

TEST(ChangePace, what_is_due_is_told_then)
{
    EXPECT_EQ(
        ChangePace().next({ .familiar = FirstChange, .other = FirstChange + 1s }), FirstChange);
    EXPECT_EQ(
        ChangePace().next({ .familiar = FirstChange + 1s, .other = FirstChange }), FirstChange);
}

TEST(ChangePace, other_clients_do_not_hold_up_familiar_ones)
{
    ChangePace pace;
    const auto last = tellOften(pace, { .other = FirstChange });
    EXPECT_EQ(pace.next({ .other = last }), last + Pace::LongestPause);
    EXPECT_EQ(pace.next({ .familiar = last, .other = last }), last);
}

TEST(ChangePace, familiar_clients_that_change_all_the_time_are_held_up)
{
    ChangePace pace;
    const auto last = tellOften(pace, { .familiar = FirstChange });
    EXPECT_EQ(pace.next({ .familiar = last }), last + Pace::LongestPause);
}

// The link has been rebuilt with what was due, so both kinds have had their turn.
TEST(ChangePace, what_was_told_together_counts_for_both)
{
    ChangePace pace;
    pace.told({ .familiar = FirstChange, .other = FirstChange }, FirstChange);
    EXPECT_EQ(pace.next({ .familiar = FirstChange }), FirstChange + Pace::ShortestPause);
    EXPECT_EQ(pace.next({ .other = FirstChange }), FirstChange + Pace::ShortestPause);
}

} // namespace
} // namespace kestrel::test
