#include "panel/PaintedPart.h"

#include "common/InterfaceImage.h"

namespace kestrel {

namespace {
constexpr int FaintestAlpha = 128;
}

QRectF paintedPart(const InterfaceImage& image, const QRect& frame)
{
    const QImage& pixels = image.single();
    const QRect within = frame & pixels.rect();
    if (!pixels.hasAlphaChannel())
        return within;
    QRect painted;
    for (int y = within.top(); y <= within.bottom(); ++y) {
        for (int x = within.left(); x <= within.right(); ++x) {
            if (qAlpha(pixels.pixel(x, y)) >= FaintestAlpha)
                painted |= QRect(x, y, 1, 1);
        }
    }
    return painted;
}

} // namespace kestrel
