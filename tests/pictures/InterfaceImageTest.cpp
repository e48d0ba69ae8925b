#include "pictures/InterfaceImage.h"

#include <QColor>

#include <gtest/gtest.h>

namespace kestrel::test {

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
