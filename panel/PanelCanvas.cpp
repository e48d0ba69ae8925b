#include "panel/PanelCanvas.h"

#include <cmath>

namespace kestrel {

namespace {
int nearest(double value)
{
    return static_cast<int>(std::floor(value + 0.5));
}

constexpr double FarthestPixel = 1 << 20; // far beyond any screen

// Other rectangles would overflow the arithmetic on whole pixels.
bool isPaintable(const QRectF& rect)
{
    return rect.width() > 0 && rect.height() > 0 && std::abs(rect.left()) < FarthestPixel
        && std::abs(rect.top()) < FarthestPixel && rect.width() < FarthestPixel
        && rect.height() < FarthestPixel;
}

// Returns the part of `destination` that shows `there`, the part of `source` that the picture has.
QRectF correspondingPart(const QRectF& destination, const QRectF& source, const QRectF& there)
{
    const double x = destination.width() / source.width();
    const double y = destination.height() / source.height();
    return { destination.left() + (there.left() - source.left()) * x,
        destination.top() + (there.top() - source.top()) * y, there.width() * x,
        there.height() * y };
}
} // namespace

PanelCanvas::PanelCanvas(
    QPainter& painter, const QRect& content, const QRect& dirty, SpriteCache& sprites)
    : m_painter(painter)
    , m_sprites(sprites)
    , m_content(content)
{
    m_painter.save();
    m_painter.translate(content.topLeft());
    const QTransform& device = m_painter.deviceTransform();
    if (device.type() <= QTransform::TxScale && device.m11() > 0 && device.m22() > 0) {
        m_horizontal = device.m11();
        m_vertical = device.m22();
    }
    m_sprites.setPanelSize({ m_horizontal * m_content.width(), m_vertical * m_content.height() });
    // From here on the painter's unit is the device pixel: copying needs no transformation.
    m_painter.scale(1 / m_horizontal, 1 / m_vertical);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    const QRectF wanted = QRectF(dirty & content).translated(-m_content.topLeft());
    m_dirty = QRectF(wanted.left() * m_horizontal, wanted.top() * m_vertical,
        wanted.width() * m_horizontal, wanted.height() * m_vertical)
                  .toAlignedRect();
}

PanelCanvas::~PanelCanvas()
{
    m_painter.restore();
}

QRectF PanelCanvas::fromBottomLeft(const QRectF& rect, const QRectF& content)
{
    return { rect.x(), content.height() - rect.y() - rect.height(), rect.width(), rect.height() };
}

QRect PanelCanvas::covered(const QRectF& destination, const QRectF& content)
{
    const QRectF place = fromBottomLeft(destination, content);
    // Rounding to whole device pixels may move each edge by up to one pixel.
    return isPaintable(place) ? place.toAlignedRect().adjusted(-1, -1, 1, 1) : QRect();
}

void PanelCanvas::fill(const QColor& colour)
{
    m_painter.fillRect(m_dirty, colour);
}

QRect PanelCanvas::onDevice(const QRectF& destination) const
{
    return { nearest(destination.left() * m_horizontal), nearest(destination.top() * m_vertical),
        std::max(1, nearest(destination.width() * m_horizontal)),
        std::max(1, nearest(destination.height() * m_vertical)) };
}

void PanelCanvas::draw(const InterfaceImage& image, const QRectF& source, const QRectF& destination,
    QPainter::CompositionMode operation)
{
    const QRectF wanted = fromBottomLeft(source, QRectF(QPointF(), image.size()));
    const QRectF there = wanted & QRectF(QPointF(), image.size());
    if (there.isEmpty())
        return;
    const QRectF place = correspondingPart(fromBottomLeft(destination, m_content), wanted, there);
    if (!isPaintable(place))
        return;
    const QRect device = onDevice(place);
    if (!device.intersects(m_dirty))
        return;
    const auto sprite = m_sprites.sprite(image, there.toAlignedRect(), device.size());
    // On an opaque ground, SourceIn copies an opaque picture. Source does the same much faster.
    const bool copies
        = operation == QPainter::CompositionMode_SourceIn && !sprite.image.hasAlphaChannel();
    m_painter.setCompositionMode(copies ? QPainter::CompositionMode_Source : operation);
    m_painter.drawImage(device.topLeft(), sprite.image, sprite.source);
}

} // namespace kestrel
