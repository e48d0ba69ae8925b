#include "activity/Recording.h"

#include "activity/EventTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace kestrel::test {

namespace {
using namespace std::chrono_literals;
using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;

class Recorded : public testing::Test {
protected:
    Recorded()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
    }

    ActivityEvent event(Kind kind) const { return { kind, now, wall }; }
    void packet(const std::vector<std::uint8_t>& bytes, Outcome outcome, std::string_view text = {})
    {
        ActivityEvent kept = event(Kind::Packet);
        kept.setPacket(bytes);
        kept.setOutcome(outcome);
        kept.setText(text);
        log.record(kept);
    }
    void pass(std::chrono::microseconds time)
    {
        now += time;
        wall += time;
    }

    ActivityLog log;
    Clock::TimePoint now { 5h };
    Clock::WallTime wall { 65071s + 482ms };
};

const std::string Head = "# What the console sent, recorded by ZENTA Kestrel.\n"
                         "# zenta-console plays it back; the arrows say what became of it then.\n"
                         "heartbeat off\n"
                         "expect listener 60000\n";
} // namespace

TEST_F(Recorded, an_empty_log_is_a_script_without_packets)
{
    EXPECT_EQ(Recording::script(log), Head);
}

TEST_F(Recorded, packets_come_at_their_times_and_comments_say_what_became_of_them)
{
    ActivityEvent opened = event(Kind::LinkOpened);
    opened.setText("ZENTA, port 5");
    log.record(opened);
    pass(250100us);
    packet({ 0xB0, 0x0F, 0x40, 0x2F, 0x45 }, Outcome::Typed, "⌘S");
    pass(1s);
    packet({ 0x90, 0x00, 0x00 }, Outcome::Answered);
    EXPECT_EQ(Recording::script(log),
        Head
            + "\n# 1970-01-01\n"
              "# 18:04:31.482  Link opened: ZENTA, port 5\n"
              "# 18:04:31.732  Key 6 pressed → typed ⌘S\n"
              "at 0.0000 send B0 0F 40 2F 45\n"
              "# 18:04:32.732  Heartbeat → answered\n"
              "at 1.0000 send 90 00 00\n");
}

TEST_F(Recorded, a_packet_that_was_not_kept_whole_is_a_comment)
{
    packet(std::vector<std::uint8_t>(ActivityEvent::KeptBytes, 0xF0), Outcome::Ignored);
    packet(std::vector<std::uint8_t>(ActivityEvent::KeptBytes + 1, 0xF0), Outcome::Ignored);
    packet({}, Outcome::Ignored);
    const std::string script = Recording::script(log);
    EXPECT_NE(script.find("at 0.0000 send F0 F0"), std::string::npos);
    EXPECT_EQ(script.find("send"), script.rfind("send")) << "only the first one is sent";
    EXPECT_NE(script.find("# not kept whole, 129 bytes: F0 F0"), std::string::npos);
}

TEST_F(Recorded, long_pauses_between_packets_are_shortened)
{
    ActivityEvent missing = event(Kind::WorkstationMissing);
    log.record(missing);
    pass(72h);
    packet({ 0x90, 0x00, 0x00 }, Outcome::Answered);
    pass(60s);
    packet({ 0x90, 0x00, 0x00 }, Outcome::Answered);
    pass(48h + 1us);
    packet({}, Outcome::Ignored);
    pass(1h + 5min);
    packet({ 0x90, 0x00, 0x00 }, Outcome::Answered);
    pass(60s + 1us);
    packet({ 0x90, 0x00, 0x00 }, Outcome::Answered);
    EXPECT_EQ(Recording::script(log),
        Head
            + "\n# 1970-01-01\n"
              "# 18:04:31.482  Pro Tools is not running\n"
              "\n# 1970-01-04\n"
              "# 18:04:31.482  Heartbeat → answered\n"
              "at 0.0000 send 90 00 00\n"
              "# 18:05:31.482  Heartbeat → answered\n"
              "at 60.0000 send 90 00 00\n"
              "\n# 1970-01-06\n"
              "# 18:05:31.482  Unknown packet → nothing: unknown packet\n"
              "# 19:10:31.482  Heartbeat → answered\n"
              "# no packet for 49 h 5 min, shortened to 1 min\n"
              "at 120.0000 send 90 00 00\n"
              "# 19:11:31.482  Heartbeat → answered\n"
              "# no packet for 1 min, shortened to 1 min\n"
              "at 180.0000 send 90 00 00\n");
}

TEST_F(Recorded, a_line_for_people_has_the_bytes_at_its_end)
{
    packet({ 0xB0, 0x2F, 0x45 }, Outcome::OtherInFront, "Finder");
    EXPECT_EQ(Recording::line(log.event(0)),
        "18:04:31.482  Key 6 pressed → nothing: Finder is in front, not Pro Tools  [B0 2F 45]");
    EXPECT_EQ(
        Recording::line(event(Kind::ConsoleSilent)), "18:04:31.482  No heartbeat for 5 seconds");
}

} // namespace kestrel::test
