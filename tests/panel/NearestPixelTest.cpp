#include "artwork/NearestPixel.h"

#include <gtest/gtest.h>

namespace kestrel::test {

TEST(NearestPixel, is_the_next_one_from_just_below_the_middle_between_two)
{
    EXPECT_EQ(artwork::nearestPixel(2.4), 2);
    EXPECT_EQ(artwork::nearestPixel(2.5 - 1e-9), 3);
    EXPECT_EQ(artwork::nearestPixel(-0.5), 0);
    EXPECT_EQ(artwork::nearestPixel(-0.6), -1);
}

TEST(WholePixels, of_a_width_are_rounded_alike_but_at_least_one)
{
    EXPECT_EQ(artwork::wholePixels(2.5 - 1e-9), 3);
    EXPECT_EQ(artwork::wholePixels(2.4), 2);
    EXPECT_EQ(artwork::wholePixels(0.2), 1);
    EXPECT_EQ(artwork::wholePixels(0), 1);
}

} // namespace kestrel::test
