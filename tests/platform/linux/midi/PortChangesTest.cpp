#include "platform/linux/midi/PortChanges.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using enum PortChanges::Kinds;

constexpr PortChanges::TimePoint Start { 1h };
constexpr auto Settled = Start + PortChanges::Settling;
const PortListing Source { "ZENTA:midi_1", PortDirection::Output };
const PortListing Destination { "ZENTA:midi_1_in", PortDirection::Input };
constexpr auto Absent = PortChanges::Before::Absent;
constexpr auto Present = PortChanges::Before::Present;
constexpr auto Never = PortChanges::TimePoint::max();

// Returns what has settled by then, as a receiver without a pace takes it.
unsigned takeAt(PortChanges& changes, PortChanges::TimePoint now)
{
    const auto due = changes.due();
    return std::min(due.familiar, due.other) <= now ? changes.take() : 0;
}

TEST(PortChanges, without_any_nothing_is_due)
{
    PortChanges changes;
    EXPECT_EQ(changes.due().other, Never);
    EXPECT_EQ(takeAt(changes, Settled), 0u);
}

TEST(PortChanges, a_port_that_stays_has_come_when_it_has_settled_and_only_once)
{
    PortChanges changes;
    changes.came(Source, Absent, Start);
    EXPECT_EQ(changes.due().other, Settled);
    EXPECT_EQ(takeAt(changes, Settled - 1ms), 0u);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded);
    EXPECT_EQ(takeAt(changes, Settled + 1h), 0u);
    EXPECT_EQ(changes.due().other, Never);
}

TEST(PortChanges, a_port_that_stays_away_is_gone_when_that_has_settled)
{
    PortChanges changes;
    changes.went(Destination, Start);
    EXPECT_EQ(changes.due().other, Settled);
    EXPECT_EQ(takeAt(changes, Settled), DestinationRemoved);
}

TEST(PortChanges, each_kind_is_one_change_however_many_ports_it_has)
{
    PortChanges changes;
    for (const char* name : { "a:1", "a:2", "a:3" }) {
        changes.came({ name, PortDirection::Output }, Absent, Start);
        changes.came({ name, PortDirection::Input }, Absent, Start);
    }
    changes.went({ "b:1", PortDirection::Output }, Start);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded | DestinationAdded | SourceRemoved);
}

TEST(PortChanges, ports_that_come_one_after_the_other_are_one_change)
{
    PortChanges changes;
    changes.came(Source, Absent, Start);
    changes.came(Destination, Absent, Settled - 1ms);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded | DestinationAdded);
    EXPECT_EQ(changes.due().other, Never);
}

TEST(PortChanges, a_port_that_comes_and_goes_has_not_changed)
{
    PortChanges changes;
    for (auto now = Start; now < Start + 10s; now += 100ms) {
        changes.came(Source, Absent, now);
        EXPECT_EQ(takeAt(changes, now), 0u);
        changes.went(Source, now + 50ms);
        EXPECT_EQ(takeAt(changes, now + 50ms), 0u);
    }
    EXPECT_EQ(changes.due().other, Never);
}

TEST(PortChanges, a_port_that_goes_and_returns_has_not_changed)
{
    PortChanges changes;
    changes.went(Source, Start);
    changes.came(Source, Absent, Start + 1ms);
    EXPECT_EQ(takeAt(changes, Start + 1h), 0u);
}

TEST(PortChanges, a_flapping_port_holds_up_no_other)
{
    PortChanges changes;
    changes.came(Source, Absent, Start);
    changes.came({ "flapping:1", PortDirection::Output }, Absent, Settled - 1ms);
    EXPECT_EQ(changes.due().other, Settled);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded);
}

TEST(PortChanges, a_wanted_port_that_goes_and_returns_has_changed)
{
    PortChanges changes;
    changes.want(Source);
    changes.went(Source, Start);
    changes.came(Source, Absent, Start);
    EXPECT_EQ(takeAt(changes, Settled), SourceRemoved | SourceAdded);
}

TEST(PortChanges, a_wanted_port_that_comes_and_goes_all_the_time_counts_when_it_has_settled)
{
    PortChanges changes;
    changes.want(Source);
    auto last = Start;
    for (auto now = Start; now < Start + 10s; now += 100ms) {
        changes.went(Source, now);
        EXPECT_EQ(takeAt(changes, now), 0u);
        last = now + 50ms;
        changes.came(Source, Absent, last);
        EXPECT_EQ(takeAt(changes, last), 0u);
    }
    EXPECT_EQ(changes.due().familiar, last + PortChanges::Settling);
    EXPECT_EQ(takeAt(changes, last + PortChanges::Settling), SourceRemoved | SourceAdded);
}

TEST(PortChanges, a_listed_port_that_comes_counts_however_often_it_is_told)
{
    PortChanges changes;
    changes.came(Source, Present, Start);
    changes.came(Source, Present, Start);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded);
}

// It was there before it came, so its end is a change.
TEST(PortChanges, a_listed_port_that_comes_and_goes_is_gone)
{
    PortChanges changes;
    changes.came(Source, Present, Start);
    changes.went(Source, Start);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded | SourceRemoved);
}

// The receiver has not asked for it.
TEST(PortChanges, a_listed_port_that_came_is_not_wanted)
{
    PortChanges changes;
    changes.came(Source, Present, Start);
    EXPECT_EQ(takeAt(changes, Settled), SourceAdded);
    changes.went(Source, Settled);
    changes.came(Source, Absent, Settled);
    EXPECT_EQ(takeAt(changes, Settled + 1h), 0u);
}

TEST(PortChanges, a_cut_connection_counts_as_a_removal)
{
    PortChanges changes;
    changes.want(Source);
    changes.cut(Source, Start);
    EXPECT_EQ(takeAt(changes, Settled), SourceRemoved);
}

TEST(PortChanges, a_cut_that_is_told_before_or_after_the_removal_is_one_change_with_it)
{
    for (const bool cutFirst : { false, true }) {
        PortChanges changes;
        changes.want(Source);
        if (cutFirst)
            changes.cut(Source, Start);
        changes.went(Source, Start);
        if (!cutFirst)
            changes.cut(Source, Start);
        EXPECT_EQ(takeAt(changes, Settled - 1ms), 0u);
        EXPECT_EQ(takeAt(changes, Settled), SourceRemoved);
        EXPECT_EQ(takeAt(changes, Settled + 1h), 0u);
    }
}

TEST(PortChanges, all_ports_of_the_client_of_a_wanted_port_are_familiar_and_no_others)
{
    PortChanges changes;
    changes.came({ "ZENTA:midi_2", PortDirection::Output }, Absent, Start);
    EXPECT_EQ(changes.due().familiar, Never);
    changes.want(Source);
    changes.came({ "other:1", PortDirection::Output }, Absent, Start + 1ms);
    EXPECT_EQ(changes.due().familiar, Settled);
    EXPECT_EQ(changes.due().other, Settled + 1ms);
}

TEST(PortChanges, a_client_that_was_known_before_is_familiar_but_its_ports_are_not_wanted)
{
    PortChanges changes;
    changes.know("ZENTA");
    changes.came(Source, Absent, Start);
    EXPECT_EQ(changes.due().familiar, Settled);
    changes.went(Source, Start + 1ms);
    EXPECT_EQ(changes.due().familiar, Never);
}

TEST(PortChanges, another_try_is_due_at_once_and_counts_as_one_added_source)
{
    PortChanges changes;
    changes.tryAgain(Start);
    EXPECT_EQ(changes.due().familiar, Start);
    EXPECT_EQ(takeAt(changes, Start), SourceAdded);
    EXPECT_EQ(takeAt(changes, Start + 1h), 0u);
}

} // namespace
} // namespace kestrel::test
