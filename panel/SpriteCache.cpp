#include "panel/SpriteCache.h"

namespace kestrel {

void SpriteCache::setPanelSize(QSizeF pixels)
{
    if (pixels == m_panelSize)
        return;
    m_panelSize = pixels;
    m_scaled.clear();
    m_scaledBytes = 0;
}

SpriteCache::Sprite SpriteCache::sprite(
    const InterfaceImage& image, const QRect& source, QSize pixels)
{
    if (pixels == source.size())
        return { image.single(), source };
    const bool finer = !image.doubled().isNull(); // also the better one to scale down
    const QImage& picture = finer ? image.doubled() : image.single();
    const QRect part = finer ? QRect(source.topLeft() * 2, source.size() * 2) : source;
    if (pixels == part.size())
        return { picture, part };

    const Key key { picture.cacheKey(), source, pixels };
    const auto found = m_scaled.constFind(key);
    if (found != m_scaled.cend())
        return { *found, found->rect() };
    // Cuts before scaling: in a picture scaled as a whole, cells would bleed into their neighbours.
    const QImage scaled
        = picture.copy(part).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (m_scaledBytes + scaled.sizeInBytes() > MaximumBytes) {
        m_scaled.clear();
        m_scaledBytes = 0;
    }
    m_scaledBytes += scaled.sizeInBytes();
    m_scaled.insert(key, scaled);
    return { scaled, scaled.rect() };
}

} // namespace kestrel
