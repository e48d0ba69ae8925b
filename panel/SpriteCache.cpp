#include "panel/SpriteCache.h"

#include <utility>

namespace kestrel {

namespace {
qint64 identity(const DrawnPicture& picture)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(&picture));
}
} // namespace

void SpriteCache::clear()
{
    m_made.clear();
    m_madeBytes = 0;
    m_largest = {};
    m_largestBytes = 0;
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
    keep(key, made);
    return { made, made.rect() };
}

void SpriteCache::keep(const Key& key, const QImage& made)
{
    qsizetype counted = made.sizeInBytes();
    if (counted > m_largestBytes) {
        m_largest = key;
        counted = std::exchange(m_largestBytes, counted); // of the piece that was the largest
    }
    if (m_madeBytes + counted > MaximumBytes)
        removeAllButTheLargest();
    m_madeBytes += counted;
    m_made.insert(key, made);
}

void SpriteCache::removeAllButTheLargest()
{
    const QImage largest = m_made.take(m_largest);
    m_made.clear();
    m_madeBytes = 0;
    if (!largest.isNull())
        m_made.insert(m_largest, largest);
}

} // namespace kestrel
