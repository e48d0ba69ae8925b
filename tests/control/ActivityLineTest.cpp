#include "control/ActivityLine.h"

#include "activity/ActivityLog.h"
#include "control/ActivityFeed.h"

#include <QList>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <vector>

namespace kestrel::test {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;

ActivityEvent eventOf(Kind kind)
{
    return { kind, Clock::TimePoint(microseconds(1500000)),
        Clock::WallTime(milliseconds(1790000000123)) };
}

ActivityEvent keyPress()
{
    ActivityEvent event = eventOf(Kind::Packet);
    event.setPacket(std::array<std::uint8_t, 5> { 0xB0, 0x0F, 0x40, 0x2F, 0x45 });
    event.setOutcome(Outcome::Typed);
    event.setText("⌘S");
    return event;
}

void expectSame(const ActivityEvent& left, const ActivityEvent& right)
{
    EXPECT_EQ(left.time(), right.time());
    EXPECT_EQ(left.wallTime(), right.wallTime());
    EXPECT_EQ(left.kind(), right.kind());
    EXPECT_EQ(left.outcome(), right.outcome());
    EXPECT_EQ(left.packetSize(), right.packetSize());
    EXPECT_TRUE(std::equal(
        left.bytes().begin(), left.bytes().end(), right.bytes().begin(), right.bytes().end()));
    EXPECT_EQ(left.text(), right.text());
}

TEST(ActivityLine, says_what_happened_in_words_and_in_bytes)
{
    EXPECT_EQ((ActivityLine { 7, keyPress() }).toJson(),
        "{\"bytes\":\"B0 0F 40 2F 45\",\"event\":\"packet\",\"microseconds\":1500000,\"number\":7,"
        "\"outcome\":\"typed\",\"result\":\"typed ⌘S\",\"size\":5,\"text\":\"⌘S\","
        "\"time\":\"2026-09-21T14:13:20.123Z\",\"what\":\"Key 6 pressed\"}");
    EXPECT_EQ((ActivityLine { 8, eventOf(Kind::ConsoleSilent) }).toJson(),
        "{\"event\":\"consoleSilent\",\"microseconds\":1500000,\"number\":8,\"text\":\"\","
        "\"time\":\"2026-09-21T14:13:20.123Z\",\"what\":\"No heartbeat for 5 seconds\"}");
}

TEST(ActivityLine, makes_every_event_again)
{
    for (int kind = 0; kind <= static_cast<int>(Kind::PacketsLost); ++kind) {
        const ActivityEvent event = eventOf(static_cast<Kind>(kind));
        const auto read = ActivityLine::fromJson((ActivityLine { 1, event }).toJson());
        ASSERT_TRUE(read) << kind;
        expectSame(read->event, event);
    }
    for (int outcome = 0; outcome <= static_cast<int>(Outcome::SessionUnavailable); ++outcome) {
        ActivityEvent event = keyPress();
        event.setOutcome(static_cast<Outcome>(outcome));
        const auto read = ActivityLine::fromJson((ActivityLine { 2, event }).toJson());
        ASSERT_TRUE(read) << outcome;
        EXPECT_EQ(read->number, 2u);
        expectSame(read->event, event);
    }
}

TEST(ActivityLine, keeps_the_size_of_a_packet_that_was_cut)
{
    ActivityEvent event = keyPress();
    event.setPacket(std::vector<std::uint8_t>(500, 0x7F));
    const auto read = ActivityLine::fromJson((ActivityLine { 1, event }).toJson());
    ASSERT_TRUE(read);
    expectSame(read->event, event);
}

TEST(ActivityLine, that_is_none_is_refused)
{
    const auto changed = [](const char* before, const char* after) {
        QByteArray text = (ActivityLine { 7, keyPress() }).toJson();
        EXPECT_TRUE(text.contains(before));
        return ActivityLine::fromJson(text.replace(before, after)).has_value();
    };
    EXPECT_FALSE(changed("\"packet\"", "\"parcel\""));
    EXPECT_FALSE(changed("\"typed\"", "\"eaten\""));
    EXPECT_FALSE(changed("\"number\":7", "\"number\":-7"));
    EXPECT_FALSE(changed("\"size\":5", "\"size\":6"));
    EXPECT_FALSE(changed("\"size\":5", "\"size\":5000000000"));
    EXPECT_FALSE(changed("B0 0F", "B0"));
    EXPECT_FALSE(changed("2026-09", "2026-99"));
    EXPECT_FALSE(ActivityLine::fromJson("nothing"));
    EXPECT_FALSE(ActivityLine::fromJson(droppedLine(3)));
}

TEST(ActivityFeed, begins_with_the_oldest_event_and_goes_on_as_events_come)
{
    ActivityLog log;
    log.record(eventOf(Kind::NoConsole));
    log.record(keyPress());
    ActivityFeed feed(log);
    EXPECT_EQ(feed.next().count('\n'), 2);
    EXPECT_EQ(feed.next(), "");
    log.record(keyPress());
    EXPECT_EQ(feed.next(), (ActivityLine { 2, keyPress() }).toJson() + '\n');
}

TEST(ActivityFeed, comes_in_batches)
{
    ActivityLog log;
    for (std::uint64_t i = 0; i < 2 * ActivityFeed::EventsInOneBatch + 1; ++i)
        log.record(keyPress());
    ActivityFeed feed(log);
    EXPECT_EQ(feed.next().count('\n'), 128);
    EXPECT_EQ(feed.next().count('\n'), 128);
    EXPECT_EQ(feed.next().count('\n'), 1);
}

TEST(ActivityFeed, tells_a_slow_reader_how_many_events_it_has_lost)
{
    ActivityLog log;
    log.record(keyPress());
    ActivityFeed feed(log);
    EXPECT_EQ(feed.next().count('\n'), 1);
    for (std::size_t i = 0; i < ActivityLog::Capacity + 10; ++i)
        log.record(keyPress());
    const QByteArray lines = feed.next();
    const QByteArray first = lines.first(lines.indexOf('\n'));
    EXPECT_EQ(droppedIn(first), 10u);
    EXPECT_EQ(first, "{\"dropped\":10}");
    EXPECT_FALSE(droppedIn((ActivityLine { 7, keyPress() }).toJson()));
    const auto second = ActivityLine::fromJson(lines.split('\n').at(1));
    ASSERT_TRUE(second);
    EXPECT_EQ(second->number, 11u);
}

} // namespace
} // namespace kestrel::test
