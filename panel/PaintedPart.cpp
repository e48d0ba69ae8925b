#include "panel/PaintedPart.h"

#include "common/InterfaceImage.h"

namespace kestrel {

namespace {
constexpr int FaintestAlpha = 128;
}

QRectF paintedPart(const InterfaceImage& image, const QRect& frame)
{
    const QRect within = frame & QRect(QPoint(), image.size().toSize());
    if (within.isEmpty() || image.isOpaque())
        return within;
    const QImage pixels = image.piece(within, within.size());
    QRect painted;
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x) {
            if (qAlpha(pixels.pixel(x, y)) >= FaintestAlpha)
                painted |= QRect(within.topLeft() + QPoint(x, y), QSize(1, 1));
        }
    }
    return painted;
}

} // namespace kestrel
