#pragma once

#include "common/InterfaceImage.h"

#include <QHash>
#include <QRect>

namespace kestrel {

// Cuts pieces out of pictures in the size in which they are painted. At the sizes of the two
// pixel densities a piece is a part of the picture itself; at any other it is scaled once, with
// care, and kept until the panel gets another size.
class SpriteCache {
public:
    struct Sprite {
        QImage image;
        QRect source; // the part of `image` to be painted, in its pixels
    };

    // What the whole panel measures in device pixels; every piece kept is given up when that is
    // new.
    void setPanelSize(QSizeF pixels);

    // `source` lies within the picture: units, origin top left. `pixels` is what it shall measure.
    [[nodiscard]] Sprite sprite(const InterfaceImage& image, const QRect& source, QSize pixels);

    // What the scaled pieces may take; beyond it all of them are given up and made anew.
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
