#include "artwork/Canvas.h"

#include "artwork/NearestPixel.h"

#include <utility>

namespace kestrel::artwork {

Canvas::Canvas(QSize units, int scale, Backing backing)
    : Canvas(QRectF(QPointF(), QSizeF(units)), units * scale, backing)
{
}

Canvas::Canvas(const QRectF& area, QSize pixels, Backing backing)
    : m_area(area)
    , m_scale(pixels.height() / area.height())
    , m_backing(backing)
    , m_image(pixels,
          backing == Backing::Opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied)
{
    m_image.fill(backing == Backing::Opaque ? Qt::black : Qt::transparent);
    m_painter.begin(&m_image);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.scale(pixels.width() / area.width(), m_scale);
    m_painter.translate(-area.topLeft());
    m_painter.setPen(Qt::NoPen);
}

QRectF Canvas::onPixels(const QRectF& units) const
{
    const QTransform& transform = m_painter.transform();
    const QRectF place = transform.mapRect(units);
    const QRectF whole(nearestPixel(place.x()), nearestPixel(place.y()), wholePixels(place.width()),
        wholePixels(place.height()));
    return transform.inverted().mapRect(whole);
}

QImage Canvas::take()
{
    m_painter.end();
    if (m_backing == Backing::Opaque)
        return m_image.convertToFormat(QImage::Format_RGB888);
    return m_image.convertToFormat(QImage::Format_ARGB32);
}

QImage Canvas::takeToPaint()
{
    m_painter.end();
    return std::exchange(m_image, {});
}

} // namespace kestrel::artwork
