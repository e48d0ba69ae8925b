#pragma once

#include "pictures/InterfaceImage.h"

#include <QHash>
#include <QRect>

namespace kestrel {

// Makes pieces of pictures in the size in which they are painted. A piece of a drawn picture is
// drawn once and kept until the cache is cleared. A picture of pixels is used as it is at the size
// of either pixel density; for any other size its piece is scaled once, smoothly, and kept.
class SpriteCache {
public:
    struct Sprite {
        QImage image;
        QRect source; // the part of `image` to be painted, in its pixels
    };

    void clear();

    // `source` lies within the picture, in units, origin at the top left. `pixels` is the size of
    // the result.
    [[nodiscard]] Sprite sprite(const InterfaceImage& image, const QRect& source, QSize pixels);

    // The light of a piece with its reach, in `pixels`. Null if the piece throws none.
    [[nodiscard]] QImage light(const DrawnPicture& picture, const QRect& source, QSize pixels);

    // The limit for all kept pieces together but the largest, which is the panel's background: it
    // takes longest to draw, and fills a large part of this by itself. A piece that would exceed
    // the limit removes the others first.
    static constexpr qsizetype MaximumBytes = 32 << 20;
    // Without the largest piece.
    [[nodiscard]] qsizetype keptBytes() const { return m_madeBytes; }

private:
    enum class Part { Picture, Light };

    struct Key {
        qint64 image;
        Part part;
        QRect source;
        QSize pixels;

        friend bool operator==(const Key&, const Key&) = default;
        friend size_t qHash(const Key& key, size_t seed)
        {
            return qHashMulti(seed, key.image, static_cast<int>(key.part), key.source.left(),
                key.source.top(), key.source.width(), key.source.height(), key.pixels.width(),
                key.pixels.height());
        }
    };

    template <typename Make> Sprite kept(const Key& key, const Make& make);
    void keep(const Key& key, const QImage& made);
    void removeAllButTheLargest();

    QHash<Key, QImage> m_made;
    qsizetype m_madeBytes = 0;
    Key m_largest {};
    qsizetype m_largestBytes = 0;
};

} // namespace kestrel
