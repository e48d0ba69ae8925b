#include "tools/artwork/Canvas.h"

namespace kestrel::artwork {

Canvas::Canvas(QSize units, int scale, Backing backing)
    : m_units(units)
    , m_scale(scale)
    , m_backing(backing)
    , m_image(units * scale,
          backing == Backing::Opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied)
{
    m_image.fill(backing == Backing::Opaque ? Qt::black : Qt::transparent);
    m_painter.begin(&m_image);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.scale(scale, scale);
    m_painter.setPen(Qt::NoPen);
}

QImage Canvas::take()
{
    m_painter.end();
    if (m_backing == Backing::Opaque)
        return m_image.convertToFormat(QImage::Format_RGB888);
    return m_image.convertToFormat(QImage::Format_ARGB32);
}

} // namespace kestrel::artwork
