#include "common/KestrelUtilities.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace kestrel::test {

namespace {
InterfaceImage image(int width, int height)
{
    QImage single(width, height, QImage::Format_RGB32);
    single.fill(Qt::black);
    return InterfaceImage(single);
}
} // namespace

TEST(KestrelUtilities, the_draw_ratio_is_content_over_picture_on_each_axis)
{
    double width = 0;
    double height = 0;
    KestrelUtilities::getDrawRatio(QRectF(5, 6, 1564, 110), image(782, 220), width, height, true);
    EXPECT_EQ(width, 2.0);
    EXPECT_EQ(height, 0.5);
}

TEST(KestrelUtilities, text_and_pictures_have_the_same_draw_ratio)
{
    double widths[2] {};
    double heights[2] {};
    for (const bool viewDisplay : { false, true }) {
        KestrelUtilities::getDrawRatio(QRectF(0, 0, 1000, 281), image(782, 220),
            widths[viewDisplay], heights[viewDisplay], viewDisplay);
    }
    EXPECT_EQ(widths[0], widths[1]);
    EXPECT_EQ(heights[0], heights[1]);
    EXPECT_DOUBLE_EQ(widths[0], 1000 / 782.0);
}

TEST(KestrelUtilities, an_empty_content_has_the_ratio_0)
{
    double width = 1;
    double height = 1;
    KestrelUtilities::getDrawRatio(QRectF(), image(782, 220), width, height, false);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
}

TEST(KestrelUtilities, a_picture_that_is_not_there_is_null)
{
    EXPECT_TRUE(KestrelUtilities::imageAtPath("no such picture").isNull());
    EXPECT_TRUE(KestrelUtilities::imageAtPath("").isNull());
    EXPECT_TRUE(KestrelUtilities::imageAtPath("UserAssignable/Nothing/on").isNull());
}

} // namespace kestrel::test
