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

TEST(InterfaceImage, an_opaque_picture_loses_its_alpha_channel)
{
    QImage opaque(3, 3, QImage::Format_ARGB32);
    opaque.fill(QColor(1, 2, 3));
    EXPECT_EQ(InterfaceImage(opaque).single().format(), QImage::Format_RGB32);
    EXPECT_TRUE(InterfaceImage(opaque).isOpaque());
}

TEST(InterfaceImage, a_picture_with_a_translucent_pixel_is_premultiplied)
{
    QImage translucent(3, 3, QImage::Format_ARGB32);
    translucent.fill(QColor(1, 2, 3));
    translucent.setPixelColor(2, 2, QColor(100, 100, 100, 254));
    EXPECT_EQ(InterfaceImage(translucent).single().format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_FALSE(InterfaceImage(translucent).isOpaque());
}

TEST(InterfaceImage, a_double_density_picture_of_another_size_is_not_used)
{
    const QImage single(10, 10, QImage::Format_RGB32);
    EXPECT_FALSE(InterfaceImage(single, QImage(20, 20, QImage::Format_RGB32)).doubled().isNull());
    EXPECT_TRUE(InterfaceImage(single, QImage(20, 21, QImage::Format_RGB32)).doubled().isNull());
    EXPECT_TRUE(InterfaceImage(single).doubled().isNull());
}

TEST(InterfaceImage, a_named_picture_is_unpacked_once_for_all_its_copies)
{
    const auto picture = InterfaceImage::named("kestrel_online_16x16");
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is tested
    const InterfaceImage copy = picture;
    EXPECT_EQ(copy.size(), picture.single().size());
    EXPECT_EQ(copy.single().cacheKey(), picture.single().cacheKey());
    EXPECT_EQ(picture.single().devicePixelRatio(), 1);
    EXPECT_EQ(copy.doubled().size(), 2 * picture.single().size());
    EXPECT_EQ(copy.doubled().cacheKey(), picture.doubled().cacheKey());
    EXPECT_EQ(picture.doubled().format(), picture.single().format());
    EXPECT_EQ(picture.doubled().devicePixelRatio(), 1);
}

TEST(InterfaceImage, sizes_are_those_of_the_single_density)
{
    const InterfaceImage picture(
        QImage(10, 12, QImage::Format_RGB32), QImage(20, 24, QImage::Format_RGB32));
    EXPECT_EQ(picture.size(), QSizeF(10, 12));
    EXPECT_EQ(picture.width(), 10);
    EXPECT_EQ(picture.height(), 12);
}

TEST(InterfaceImage, a_picture_whose_pixels_cannot_be_read_is_null_once_they_are_asked_for)
{
    const auto picture = InterfaceImage::named("unreadable");
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is tested
    const InterfaceImage copy = picture;
    EXPECT_FALSE(picture.isOpaque());
    EXPECT_TRUE(picture.single().isNull());
    EXPECT_TRUE(picture.isNull());
    EXPECT_EQ(picture.size(), QSizeF(0, 0));
    EXPECT_TRUE(copy.isNull());
}

TEST(InterfaceImage, none_has_no_size)
{
    EXPECT_TRUE(InterfaceImage().isNull());
    EXPECT_EQ(InterfaceImage().size(), QSizeF(0, 0));
}

} // namespace kestrel::test
