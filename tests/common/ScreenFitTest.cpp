#include "common/ScreenFit.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
const QRect Laptop(0, 25, 1440, 875);
const QRect Desk(1440, 0, 2560, 1440);

// A frame that takes half of the width when it does not fit.
QRect fitted(const QRect& frame, const QList<QRect>& screens)
{
    return fittedOntoScreens(
        frame, screens, [](QSize room) { return QSize(room.width() / 2, room.height()); });
}
} // namespace

TEST(ScreenFit, a_frame_on_a_screen_stays)
{
    EXPECT_EQ(fitted({ 100, 100, 782, 242 }, { Laptop }), QRect(100, 100, 782, 242));
    EXPECT_EQ(fitted({ 2000, 900, 782, 242 }, { Laptop, Desk }), QRect(2000, 900, 782, 242));
}

TEST(ScreenFit, a_frame_on_two_screens_is_in_view_and_stays)
{
    EXPECT_EQ(fitted({ 1000, 100, 782, 242 }, { Laptop, Desk }), QRect(1000, 100, 782, 242));
    EXPECT_EQ(fitted({ 100, 100, 2880, 700 }, { Laptop, Desk }), QRect(100, 100, 2880, 700));
}

TEST(ScreenFit, a_frame_that_hangs_over_an_edge_comes_wholly_into_view)
{
    EXPECT_EQ(fitted({ -1, 100, 782, 242 }, { Laptop }), QRect(0, 100, 782, 242));
    EXPECT_EQ(fitted({ 1363, 100, 782, 242 }, { Laptop }), QRect(658, 100, 782, 242));
    EXPECT_EQ(fitted({ 100, 24, 782, 242 }, { Laptop }), QRect(100, 25, 782, 242));
    EXPECT_EQ(fitted({ 100, 659, 782, 242 }, { Laptop }), QRect(100, 658, 782, 242));
    EXPECT_EQ(movedOntoScreens({ 1363, 100, 620, 453 }, { Laptop }), QRect(820, 100, 620, 453));
}

TEST(ScreenFit, a_frame_on_a_screen_that_is_gone_comes_to_the_one_that_is_left)
{
    EXPECT_EQ(fitted({ 2000, 900, 782, 242 }, { Laptop }), QRect(658, 658, 782, 242));
}

TEST(ScreenFit, a_frame_whose_top_edge_is_out_of_reach_comes_back)
{
    EXPECT_EQ(fitted({ 100, -200, 782, 242 }, { Laptop }), QRect(100, 25, 782, 242));
    EXPECT_EQ(fitted({ 100, 890, 782, 242 }, { Laptop }), QRect(100, 658, 782, 242));
    EXPECT_EQ(fitted({ -760, 100, 782, 242 }, { Laptop }), QRect(0, 100, 782, 242));
}

TEST(ScreenFit, a_frame_goes_to_the_nearest_screen)
{
    EXPECT_EQ(fitted({ 3990, 100, 782, 242 }, { Laptop, Desk }), QRect(3218, 100, 782, 242));
}

TEST(ScreenFit, a_frame_larger_than_the_nearest_screen_shrinks_as_it_says)
{
    EXPECT_EQ(fitted({ 0, 25, 2880, 800 }, { Laptop }), QRect(0, 25, 720, 875));
    EXPECT_EQ(fitted({ 0, 25, 800, 876 }, { Laptop }), QRect(0, 25, 720, 875));
    EXPECT_EQ(fitted({ 0, 25, 1440, 875 }, { Laptop }), Laptop);
}

TEST(ScreenFit, without_a_screen_the_frame_stays)
{
    EXPECT_EQ(fitted({ 5000, 0, 782, 242 }, {}), QRect(5000, 0, 782, 242));
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
