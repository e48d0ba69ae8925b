#include "panel/SpriteCache.h"

#include "tests/panel/GeometryPictures.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
const QRect Cell(0, 13, 8, 13);

class Sprites : public testing::Test {
protected:
    const InterfaceImage atlas = GeometryPictures::named("text");
    SpriteCache sprites;
};
} // namespace

TEST_F(Sprites, at_the_two_natural_sizes_a_piece_is_part_of_the_picture_itself)
{
    const auto single = sprites.sprite(atlas, Cell, { 8, 13 });
    EXPECT_EQ(single.image.cacheKey(), atlas.single().cacheKey());
    EXPECT_EQ(single.source, Cell);
    const auto doubled = sprites.sprite(atlas, Cell, { 16, 26 });
    EXPECT_EQ(doubled.image.cacheKey(), atlas.doubled().cacheKey());
    EXPECT_EQ(doubled.source, QRect(0, 26, 16, 26));
    EXPECT_EQ(sprites.keptBytes(), 0);
}

TEST_F(Sprites, at_another_size_a_piece_is_scaled_once)
{
    const auto first = sprites.sprite(atlas, Cell, { 12, 20 });
    EXPECT_EQ(first.source, QRect(0, 0, 12, 20));
    EXPECT_EQ(first.image.size(), QSize(12, 20));
    EXPECT_EQ(first.image.pixel(6, 0), GeometryPictures::cell(1, GeometryPictures::Doubled));
    EXPECT_EQ(first.image.pixel(6, 19), GeometryPictures::cell(1, GeometryPictures::Doubled));
    const auto again = sprites.sprite(atlas, Cell, { 12, 20 });
    EXPECT_EQ(again.image.cacheKey(), first.image.cacheKey());
    EXPECT_EQ(sprites.keptBytes(), 0); // the largest piece does not count
    static_cast<void>(sprites.sprite(atlas, Cell, { 11, 20 }));
    EXPECT_EQ(sprites.keptBytes(), 11 * 20 * 4);
    static_cast<void>(sprites.sprite(atlas, Cell, { 13, 20 }));
    EXPECT_EQ(sprites.keptBytes(), (11 + 12) * 20 * 4);
}

TEST_F(Sprites, a_picture_without_a_finer_one_is_scaled_itself)
{
    const InterfaceImage coarse(atlas.single());
    const auto sprite = sprites.sprite(coarse, Cell, { 16, 26 });
    EXPECT_EQ(sprite.image.pixel(8, 13), GeometryPictures::cell(1, GeometryPictures::Single));
}

TEST_F(Sprites, pieces_are_kept_until_the_cache_is_cleared)
{
    const auto before = sprites.sprite(atlas, Cell, { 12, 20 });
    static_cast<void>(sprites.sprite(atlas, Cell, { 11, 20 }));
    EXPECT_GT(sprites.keptBytes(), 0);
    sprites.clear();
    EXPECT_EQ(sprites.keptBytes(), 0);
    const auto after = sprites.sprite(atlas, Cell, { 12, 20 });
    EXPECT_NE(after.image.cacheKey(), before.image.cacheKey());
}

TEST_F(Sprites, they_never_take_more_than_their_share_of_memory)
{
    const InterfaceImage knobs = GeometryPictures::named("knob67x67");
    for (int value = 0; value < 128; ++value) {
        const QRect frame(0, value * 67, 67, 67);
        EXPECT_EQ(sprites.sprite(knobs, frame, { 400, 400 }).image.size(), QSize(400, 400));
        EXPECT_LE(sprites.keptBytes(), SpriteCache::MaximumBytes);
    }
}

TEST_F(Sprites, the_largest_of_them_stays_when_the_others_have_taken_their_share)
{
    const InterfaceImage knobs = GeometryPictures::named("knob67x67");
    const auto background = sprites.sprite(atlas, Cell, { 3000, 3000 }); // more than the limit
    for (int value = 0; value < 128; ++value)
        static_cast<void>(sprites.sprite(knobs, QRect(0, value * 67, 67, 67), { 400, 400 }));
    const auto again = sprites.sprite(atlas, Cell, { 3000, 3000 });
    EXPECT_EQ(again.image.cacheKey(), background.image.cacheKey());
    EXPECT_LE(sprites.keptBytes(), SpriteCache::MaximumBytes);
}

TEST(SpriteCache, a_piece_is_scaled_smoothly_up_and_down)
{
    QImage stripes(12, 12, QImage::Format_RGB32);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x)
            stripes.setPixel(x, y, x % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    }
    SpriteCache cache;
    for (const int size : { 9, 17 }) {
        const auto sprite = cache.sprite(InterfaceImage(stripes), stripes.rect(), { size, size });
        int mixed = 0;
        for (int x = 0; x < size; ++x) {
            const int grey = qGray(sprite.image.pixel(x, size / 2));
            mixed += grey > 16 && grey < 240 ? 1 : 0;
        }
        EXPECT_GT(mixed, size / 3) << size;
    }
}

} // namespace kestrel::test
