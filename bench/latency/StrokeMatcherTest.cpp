#include "bench/latency/StrokeMatcher.h"

#include <gtest/gtest.h>

namespace kestrel::bench {
namespace {

constexpr std::size_t Sent = 1000;

TEST(StrokeMatcher, a_complete_stream_loses_nothing_and_keeps_its_order)
{
    StrokeMatcher matcher;
    for (std::size_t n = 0; n < Sent; ++n)
        EXPECT_EQ(matcher.receive(strokeOfStream(n), Sent), n);
    EXPECT_EQ(matcher.received(), Sent);
    EXPECT_EQ(matcher.outOfOrder(), 0U);
    EXPECT_EQ(matcher.unexpected(), 0U);
}

TEST(StrokeMatcher, a_lost_stroke_is_no_disorder_even_a_turn_later)
{
    StrokeMatcher matcher;
    for (std::size_t n = 0; n < 100; ++n) {
        if (n == 30)
            continue;
        EXPECT_EQ(matcher.receive(strokeOfStream(n), Sent), n);
    }
    EXPECT_EQ(matcher.received(), 99U);
    EXPECT_EQ(matcher.outOfOrder(), 0U);
}

TEST(StrokeMatcher, a_burst_of_lost_strokes_shorter_than_a_turn_is_no_disorder)
{
    StrokeMatcher matcher;
    for (std::size_t n = 0; n < 100; ++n) {
        if (n >= 30 && n < 53)
            continue;
        EXPECT_EQ(matcher.receive(strokeOfStream(n), Sent), n);
    }
    EXPECT_EQ(matcher.received(), 77U);
    EXPECT_EQ(matcher.outOfOrder(), 0U);
}

TEST(StrokeMatcher, two_strokes_that_changed_places_are_one_out_of_order)
{
    StrokeMatcher matcher;
    EXPECT_EQ(matcher.receive(strokeOfStream(0), Sent), 0U);
    EXPECT_EQ(matcher.receive(strokeOfStream(2), Sent), 2U);
    EXPECT_EQ(matcher.receive(strokeOfStream(1), Sent), 1U);
    EXPECT_EQ(matcher.receive(strokeOfStream(3), Sent), 3U);
    EXPECT_EQ(matcher.received(), 4U);
    EXPECT_EQ(matcher.outOfOrder(), 1U);
}

TEST(StrokeMatcher, a_stroke_received_twice_is_unexpected_the_second_time)
{
    StrokeMatcher matcher;
    EXPECT_EQ(matcher.receive(strokeOfStream(0), 2), 0U);
    EXPECT_EQ(matcher.receive(strokeOfStream(0), 2), std::nullopt);
    EXPECT_EQ(matcher.received(), 1U);
    EXPECT_EQ(matcher.unexpected(), 1U);
}

TEST(StrokeMatcher, a_stroke_that_was_not_sent_yet_is_unexpected)
{
    StrokeMatcher matcher;
    EXPECT_EQ(matcher.receive(strokeOfStream(1), 1), std::nullopt);
    EXPECT_EQ(matcher.unexpected(), 1U);
}

} // namespace
} // namespace kestrel::bench
