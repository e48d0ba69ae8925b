#include "platform/linux/midi/PortChanges.h"

#include <gtest/gtest.h>

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

TEST(PortChanges, without_any_nothing_is_due)
{
    PortChanges changes;
    EXPECT_EQ(changes.due(), PortChanges::TimePoint::max());
    EXPECT_EQ(changes.take(Settled), 0u);
}

TEST(PortChanges, a_port_that_stays_has_come_when_it_has_settled_and_only_once)
{
    PortChanges changes;
    changes.came(Source, Absent, Start);
    EXPECT_EQ(changes.due(), Settled);
    EXPECT_EQ(changes.take(Settled - 1ms), 0u);
    EXPECT_EQ(changes.take(Settled), SourceAdded);
    EXPECT_EQ(changes.take(Settled + 1h), 0u);
    EXPECT_EQ(changes.due(), PortChanges::TimePoint::max());
}

TEST(PortChanges, a_port_that_stays_away_is_gone_when_that_has_settled)
{
    PortChanges changes;
    changes.went(Destination, Start);
    EXPECT_EQ(changes.due(), Settled);
    EXPECT_EQ(changes.take(Settled), DestinationRemoved);
}

TEST(PortChanges, each_kind_is_one_change_however_many_ports_it_has)
{
    PortChanges changes;
    for (const char* name : { "a:1", "a:2", "a:3" }) {
        changes.came({ name, PortDirection::Output }, Absent, Start);
        changes.came({ name, PortDirection::Input }, Absent, Start);
    }
    changes.went({ "b:1", PortDirection::Output }, Start);
    EXPECT_EQ(changes.take(Settled), SourceAdded | DestinationAdded | SourceRemoved);
}

TEST(PortChanges, ports_that_come_one_after_the_other_are_one_change)
{
    PortChanges changes;
    changes.came(Source, Absent, Start);
    changes.came(Destination, Absent, Settled - 1ms);
    EXPECT_EQ(changes.take(Settled), SourceAdded | DestinationAdded);
    EXPECT_EQ(changes.due(), PortChanges::TimePoint::max());
}

TEST(PortChanges, a_port_that_comes_and_goes_has_not_changed)
{
    PortChanges changes;
    for (auto now = Start; now < Start + 10s; now += 100ms) {
        changes.came(Source, Absent, now);
        EXPECT_EQ(changes.take(now), 0u);
        changes.went(Source, now + 50ms);
        EXPECT_EQ(changes.take(now + 50ms), 0u);
    }
    EXPECT_EQ(changes.due(), PortChanges::TimePoint::max());
}

TEST(PortChanges, a_port_that_goes_and_returns_has_not_changed)
{
    PortChanges changes;
    changes.went(Source, Start);
    changes.came(Source, Absent, Start + 1ms);
    EXPECT_EQ(changes.take(Start + 1h), 0u);
}

TEST(PortChanges, a_flapping_port_holds_up_no_other)
{
    PortChanges changes;
    changes.came(Source, Absent, Start);
    changes.came({ "flapping:1", PortDirection::Output }, Absent, Settled - 1ms);
    EXPECT_EQ(changes.due(), Settled);
    EXPECT_EQ(changes.take(Settled), SourceAdded);
}

TEST(PortChanges, the_removal_of_a_wanted_port_is_due_at_once)
{
    PortChanges changes;
    changes.want(Source);
    changes.went(Source, Start);
    EXPECT_EQ(changes.due(), Start);
    EXPECT_EQ(changes.take(Start), SourceRemoved);
}

TEST(PortChanges, a_wanted_port_that_goes_and_returns_has_changed_both_ways)
{
    PortChanges changes;
    changes.want(Source);
    changes.went(Source, Start);
    changes.came(Source, Absent, Start);
    EXPECT_EQ(changes.take(Settled), SourceRemoved | SourceAdded);
}

// The receiver could not connect it before.
TEST(PortChanges, a_listed_port_that_comes_counts_also_when_it_goes_soon)
{
    PortChanges changes;
    changes.came(Source, Present, Start);
    EXPECT_EQ(changes.take(Settled), SourceAdded);
    changes.went(Source, Settled);
    changes.came(Source, Absent, Settled);
    EXPECT_EQ(changes.take(Settled + 1h), SourceRemoved | SourceAdded);
}

TEST(PortChanges, a_cut_connection_counts_as_a_removal_at_once)
{
    PortChanges changes;
    changes.want(Source);
    changes.cut(Source, Start);
    EXPECT_EQ(changes.due(), Start);
    EXPECT_EQ(changes.take(Start), SourceRemoved);
}

} // namespace
} // namespace kestrel::test
