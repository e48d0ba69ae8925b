#include "common/ScreenFit.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
const QRect Laptop(0, 25, 1440, 875);
const QRect Desk(1440, 0, 2560, 1440);
} // namespace

TEST(ScreenFit, a_frame_on_a_screen_stays)
{
    EXPECT_EQ(fittedOntoScreens({ 100, 100, 782, 242 }, { Laptop }), QRect(100, 100, 782, 242));
    EXPECT_EQ(
        fittedOntoScreens({ 2000, 900, 782, 242 }, { Laptop, Desk }), QRect(2000, 900, 782, 242));
}

TEST(ScreenFit, a_frame_that_hangs_over_an_edge_but_can_be_grabbed_stays)
{
    EXPECT_EQ(fittedOntoScreens({ -700, 880, 782, 242 }, { Laptop }), QRect(-700, 880, 782, 242));
}

TEST(ScreenFit, a_frame_on_a_screen_that_is_gone_comes_to_the_one_that_is_left)
{
    EXPECT_EQ(fittedOntoScreens({ 2000, 900, 782, 242 }, { Laptop }), QRect(658, 658, 782, 242));
}

TEST(ScreenFit, a_frame_whose_top_edge_is_out_of_reach_comes_back)
{
    EXPECT_EQ(fittedOntoScreens({ 100, -200, 782, 242 }, { Laptop }), QRect(100, 25, 782, 242));
    EXPECT_EQ(fittedOntoScreens({ 100, 890, 782, 242 }, { Laptop }), QRect(100, 658, 782, 242));
    EXPECT_EQ(fittedOntoScreens({ -760, 100, 782, 242 }, { Laptop }), QRect(0, 100, 782, 242));
}

TEST(ScreenFit, a_frame_goes_to_the_nearest_screen)
{
    EXPECT_EQ(
        fittedOntoScreens({ 3990, 100, 782, 242 }, { Laptop, Desk }), QRect(3218, 100, 782, 242));
}

TEST(ScreenFit, a_frame_larger_than_all_screens_shrinks_in_proportion)
{
    EXPECT_EQ(fittedOntoScreens({ 0, 25, 2880, 800 }, { Laptop }), QRect(0, 25, 1440, 400));
}

TEST(ScreenFit, without_a_screen_the_frame_stays)
{
    EXPECT_EQ(fittedOntoScreens({ 5000, 0, 782, 242 }, {}), QRect(5000, 0, 782, 242));
}

TEST(ScreenFit, a_frame_that_keeps_its_size_goes_to_the_nearest_screen_too)
{
    EXPECT_EQ(
        movedOntoScreens({ 2000, 900, 620, 453 }, { Laptop, Desk }), QRect(2000, 900, 620, 453));
    EXPECT_EQ(movedOntoScreens({ 2000, 900, 620, 453 }, { Laptop }), QRect(820, 447, 620, 453));
    EXPECT_EQ(
        movedOntoScreens({ 9000, 9000, 620, 453 }, { Laptop, Desk }), QRect(3380, 987, 620, 453));
}

TEST(ScreenFit, a_frame_that_keeps_its_size_shows_its_corner_on_a_smaller_screen)
{
    const QRect tiny(0, 0, 320, 240);
    EXPECT_EQ(movedOntoScreens({ 900, 900, 620, 453 }, { tiny }), QRect(0, 0, 620, 453));
    EXPECT_EQ(movedOntoScreens({ 5000, 0, 620, 453 }, {}), QRect(5000, 0, 620, 453));
}

} // namespace kestrel::test
