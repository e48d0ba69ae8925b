#include "bench/latency/Distribution.h"

#include <gtest/gtest.h>

namespace kestrel::bench {
namespace {

Distribution thousandsUpTo(int last)
{
    Distribution times;
    for (int i = last; i >= 1; --i)
        times.add(i * 1000);
    return times;
}

TEST(Distribution, the_median_of_an_even_count_is_the_lower_middle)
{
    EXPECT_EQ(thousandsUpTo(100).microsecondsAt(50), 50);
}

TEST(Distribution, the_median_of_an_odd_count_is_the_middle)
{
    EXPECT_EQ(thousandsUpTo(5).microsecondsAt(50), 3);
}

TEST(Distribution, a_percentile_between_two_ranks_is_the_upper_one)
{
    EXPECT_EQ(thousandsUpTo(10).microsecondsAt(91), 10);
    EXPECT_EQ(thousandsUpTo(10).microsecondsAt(90), 9);
}

TEST(Distribution, a_hundred_percent_is_the_longest_and_none_the_shortest)
{
    EXPECT_EQ(thousandsUpTo(7).microsecondsAt(100), 7);
    EXPECT_EQ(thousandsUpTo(7).microsecondsAt(0), 1);
}

TEST(Distribution, nothing_measured_is_zero)
{
    EXPECT_EQ(Distribution().microsecondsAt(50), 0);
    EXPECT_EQ(Distribution().count(), 0U);
}

TEST(Distribution, pooled_rounds_weigh_by_their_presses)
{
    Distribution pooled = thousandsUpTo(9);
    Distribution slow;
    slow.add(1'000'000);
    pooled.pool(slow);
    EXPECT_EQ(pooled.count(), 10U);
    EXPECT_EQ(pooled.microsecondsAt(50), 5);
    EXPECT_EQ(pooled.microsecondsAt(100), 1000);
}

} // namespace
} // namespace kestrel::bench
