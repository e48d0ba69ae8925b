#include "activity/LinkHealth.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>

namespace kestrel::test {

namespace {
using namespace std::chrono_literals;
using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;
using State = LinkHealth::State;

class Health : public testing::Test {
protected:
    void link(Kind kind) { health.note({ kind, now }); }
    void packet(std::initializer_list<std::uint8_t> bytes, Outcome outcome)
    {
        ActivityEvent event(Kind::Packet, now);
        event.setPacket(std::vector(bytes));
        event.setOutcome(outcome);
        health.note(event);
    }
    void beatAfter(std::chrono::nanoseconds interval)
    {
        now += interval;
        packet({ 0x90, 0, 0 }, Outcome::Answered);
    }
    void press(Outcome outcome) { packet({ 0xB0, 0x2F, 0x40 }, outcome); }
    void release(Outcome outcome) { packet({ 0xB0, 0x2F, 0x00 }, outcome); }

    LinkHealth health;
    Clock::TimePoint now { 1h };
};
} // namespace

TEST_F(Health, the_first_beat_after_silence_begins_the_time_online)
{
    link(Kind::LinkOpened);
    EXPECT_EQ(health.state(), State::Waiting);
    EXPECT_EQ(health.onlineSince(), std::nullopt);
    beatAfter(1s);
    const auto first = now;
    beatAfter(1s);
    EXPECT_EQ(health.onlineSince(), first);
    link(Kind::ConsoleSilent);
    EXPECT_EQ(health.onlineSince(), std::nullopt);
    beatAfter(20s);
    EXPECT_EQ(health.onlineSince(), now);
    EXPECT_EQ(health.counts().beats, 3U);
}

TEST_F(Health, missed_beats_are_counted_within_one_time_online)
{
    beatAfter(1s);
    beatAfter(1400ms);
    EXPECT_EQ(health.counts().missedBeats, 0U);
    beatAfter(3100ms);
    EXPECT_EQ(health.counts().missedBeats, 2U);
}

TEST_F(Health, beats_are_missed_until_an_outage_is_noticed)
{
    beatAfter(1s);
    now += 7300ms;
    link(Kind::ConsoleSilent);
    EXPECT_EQ(health.counts().missedBeats, 6U);
    beatAfter(60s);
    EXPECT_EQ(health.counts().missedBeats, 6U) << "the console may have been switched off";
    now += 800ms;
    link(Kind::LinkOpened);
    beatAfter(1s);
    EXPECT_EQ(health.counts().missedBeats, 6U) << "a link that is built anew has missed none";
}

TEST_F(Health, jitter_is_the_mean_distance_from_a_second)
{
    beatAfter(1s);
    EXPECT_EQ(health.jitter(), std::nullopt);
    beatAfter(1010ms);
    beatAfter(980ms);
    EXPECT_EQ(health.jitter(), 15ms);
    beatAfter(1500ms); // a beat is missing, which is counted elsewhere
    EXPECT_EQ(health.jitter(), 15ms);
}

TEST_F(Health, the_intervals_of_five_minutes_are_kept)
{
    beatAfter(1s);
    for (std::size_t i = 0; i < LinkHealth::KeptIntervals + 2; ++i)
        beatAfter(1s + std::chrono::milliseconds(i));
    const auto intervals = health.intervals();
    ASSERT_EQ(intervals.size(), LinkHealth::KeptIntervals);
    EXPECT_EQ(intervals.front(), 1002ms);
    EXPECT_EQ(intervals.back(), 1001ms + std::chrono::milliseconds(LinkHealth::KeptIntervals));
}

TEST_F(Health, presses_are_counted_and_releases_are_not)
{
    press(Outcome::Typed);
    release(Outcome::Released);
    press(Outcome::OtherInFront);
    release(Outcome::OtherInFront);
    press(Outcome::NoShortcut);
    EXPECT_EQ(health.counts().typed, 1U);
    EXPECT_EQ(health.counts().keptBack, 2U);
    press(Outcome::NotPermitted);
    release(Outcome::NotPermitted); // macOS refuses the release too
    EXPECT_EQ(health.counts().keptBack, 3U);
}

TEST_F(Health, a_missing_permission_is_complained_about_until_a_key_is_typed)
{
    beatAfter(1s);
    press(Outcome::NotPermitted);
    EXPECT_NE(health.complaint(), "");
    press(Outcome::Typed);
    EXPECT_EQ(health.complaint(), "");
}

TEST_F(Health, each_state_that_is_wrong_has_a_complaint_of_its_own)
{
    EXPECT_EQ(health.complaint(), "");
    std::vector<std::string> complaints;
    const auto expectAnotherComplaint = [&] {
        for (const auto& earlier : complaints)
            EXPECT_NE(health.complaint(), earlier);
        complaints.push_back(health.complaint());
        EXPECT_NE(complaints.back(), "");
    };
    for (const Kind kind :
        { Kind::NoMIDIService, Kind::NoConsole, Kind::ConsoleSilent, Kind::WorkstationMissing }) {
        link(kind);
        expectAnotherComplaint();
    }
    link(Kind::WorkstationFound);
    beatAfter(1s);
    EXPECT_EQ(health.complaint(), "");
    health.notePermission(false);
    expectAnotherComplaint();
    health.notePermission(true);
    EXPECT_EQ(health.complaint(), "");
}

TEST_F(Health, a_missing_workstation_is_complained_about_while_the_console_beats)
{
    link(Kind::WorkstationMissing);
    beatAfter(1s);
    EXPECT_EQ(health.state(), State::Online);
    EXPECT_TRUE(health.isWorkstationMissing());
    EXPECT_NE(health.complaint(), "");
    link(Kind::WorkstationFound);
    EXPECT_EQ(health.complaint(), "");
}

} // namespace kestrel::test
