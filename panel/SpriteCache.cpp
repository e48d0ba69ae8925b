#include "panel/SpriteCache.h"

namespace kestrel {

namespace {
// Distinct from the keys of pixels, which count up from 1, as no object lies at so low an address.
qint64 identity(const DrawnPicture& picture)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(&picture));
}
} // namespace

void SpriteCache::clear()
{
    m_made.clear();
    m_madeBytes = 0;
}

SpriteCache::Sprite SpriteCache::sprite(
    const InterfaceImage& image, const QRect& source, QSize pixels)
{
    if (const DrawnPicture* drawn = image.drawn())
        return kept({ identity(*drawn), Part::Picture, source, pixels },
            [&] { return drawn->draw(source, pixels); });
    if (pixels == source.size())
        return { image.single(), source };
    const QImage& doubled = image.doubled();
    if (!doubled.isNull() && pixels == source.size() * 2)
        return { doubled, { source.topLeft() * 2, source.size() * 2 } };
    return kept({ image.single().cacheKey(), Part::Picture, source, pixels },
        [&] { return image.piece(source, pixels); });
}

QImage SpriteCache::light(const DrawnPicture& picture, const QRect& source, QSize pixels)
{
    return kept({ identity(picture), Part::Light, source, pixels }, [&] {
        return picture.drawLight(source, pixels);
    }).image;
}

template <typename Make> SpriteCache::Sprite SpriteCache::kept(const Key& key, const Make& make)
{
    const auto found = m_made.constFind(key);
    if (found != m_made.cend())
        return { *found, found->rect() };
    const QImage made = make();
    if (m_madeBytes + made.sizeInBytes() > MaximumBytes)
        clear();
    m_madeBytes += made.sizeInBytes();
    m_made.insert(key, made);
    return { made, made.rect() };
}

} // namespace kestrel
