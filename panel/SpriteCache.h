#pragma once

#include "common/InterfaceImage.h"

#include <QHash>
#include <QRect>

namespace kestrel {

// Cuts pieces out of pictures, in the size in which they are painted. At the size of either pixel
// density a piece is a part of the picture itself. At any other size the cache scales the piece
// once, smoothly, and keeps it until the size of the panel changes.
class SpriteCache {
public:
    struct Sprite {
        QImage image;
        QRect source; // the part of `image` to be painted, in its pixels
    };

    // Sets the size of the whole panel in device pixels. A new size empties the cache.
    void setPanelSize(QSizeF pixels);

    // `source` lies within the picture, in units, origin at the top left. `pixels` is the size of
    // the result.
    [[nodiscard]] Sprite sprite(const InterfaceImage& image, const QRect& source, QSize pixels);

    // The limit for all scaled pieces together. A piece that would exceed it empties the cache
    // first.
    static constexpr qsizetype MaximumBytes = 32 << 20;
    [[nodiscard]] qsizetype scaledBytes() const { return m_scaledBytes; }

private:
    struct Key {
        qint64 image;
        QRect source;
        QSize pixels;

        friend bool operator==(const Key&, const Key&) = default;
        friend size_t qHash(const Key& key, size_t seed)
        {
            return qHashMulti(seed, key.image, key.source.left(), key.source.top(),
                key.source.width(), key.source.height(), key.pixels.width(), key.pixels.height());
        }
    };

    QHash<Key, QImage> m_scaled;
    qsizetype m_scaledBytes = 0;
    QSizeF m_panelSize;
};

} // namespace kestrel
