#include "activity/ActivityLog.h"

#include <gtest/gtest.h>

#include <chrono>

namespace kestrel::test {

namespace {
ActivityEvent at(std::uint64_t seconds)
{
    return { ActivityEvent::Kind::Packet, Clock::TimePoint(std::chrono::seconds(seconds)) };
}
} // namespace

TEST(ActivityLog, keeps_events_in_the_order_of_their_recording)
{
    ActivityLog log;
    EXPECT_EQ(log.first(), log.count());
    log.record(at(1));
    log.record(at(2));
    ASSERT_EQ(log.first(), 0U);
    ASSERT_EQ(log.count(), 2U);
    EXPECT_EQ(log.event(0).time(), at(1).time());
    EXPECT_EQ(log.event(1).time(), at(2).time());
}

TEST(ActivityLog, a_full_log_gives_up_its_oldest_events)
{
    ActivityLog log;
    for (std::uint64_t i = 0; i < ActivityLog::Capacity + 3; ++i)
        log.record(at(i));
    ASSERT_EQ(log.first(), 3U);
    ASSERT_EQ(log.count(), ActivityLog::Capacity + 3);
    for (std::uint64_t i = log.first(); i < log.count(); ++i)
        ASSERT_EQ(log.event(i).time(), at(i).time());
}

} // namespace kestrel::test
