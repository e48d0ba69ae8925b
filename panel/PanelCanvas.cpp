#include "panel/PanelCanvas.h"

#include "artwork/NearestPixel.h"

#include <cmath>

namespace kestrel {

using artwork::nearestPixel;
using artwork::wholePixels;

namespace {
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

PanelCanvas::PanelCanvas(QImage& pixels, QSize view, const QRegion& wanted, SpriteCache& sprites)
    : m_painter(&pixels)
    , m_sprites(sprites)
    , m_wanted(wanted)
    , m_wantedBounds(wanted.boundingRect())
    , m_content(QPointF(), QSizeF(view))
    , m_horizontal(static_cast<double>(pixels.width()) / view.width())
    , m_vertical(static_cast<double>(pixels.height()) / view.height())
{
    const QRectF inView(m_wantedBounds.left() / m_horizontal, m_wantedBounds.top() / m_vertical,
        m_wantedBounds.width() / m_horizontal, m_wantedBounds.height() / m_vertical);
    // Flipping is its own inverse, so fromBottomLeft() also converts back. Each edge of a piece may
    // move by one pixel when it is rounded.
    m_wantedInView
        = fromBottomLeft(inView, m_content)
              .adjusted(-1 / m_horizontal, -1 / m_vertical, 1 / m_horizontal, 1 / m_vertical);
    if (m_wantedBounds != pixels.rect())
        m_painter.setClipRegion(m_wanted);
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

QRectF PanelCanvas::lightPlace(
    const InterfaceImage& image, const QRectF& source, const QRectF& destination)
{
    if (!image.drawn() || source.isEmpty())
        return {};
    const QRectF wanted = fromBottomLeft(source, QRectF(QPointF(), image.size()));
    const QRectF area = image.drawn()->lightArea(wanted.toAlignedRect());
    if (area.isEmpty())
        return {};
    const double x = destination.width() / source.width();
    const double y = destination.height() / source.height();
    return { destination.left() + (area.left() - wanted.left()) * x,
        destination.top() + (wanted.bottom() - area.bottom()) * y, area.width() * x,
        area.height() * y };
}

bool PanelCanvas::touches(const QRectF& destination) const
{
    return m_wantedInView.intersects(destination);
}

void PanelCanvas::fill(const QColor& colour)
{
    m_painter.fillRect(m_wantedBounds, colour);
}

QRect PanelCanvas::onDevice(const QRectF& destination) const
{
    return { nearestPixel(destination.left() * m_horizontal),
        nearestPixel(destination.top() * m_vertical),
        wholePixels(destination.width() * m_horizontal),
        wholePixels(destination.height() * m_vertical) };
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
    if (!m_wanted.intersects(device))
        return;
    const auto sprite = m_sprites.sprite(image, there.toAlignedRect(), device.size());
    // On an opaque ground, SourceIn copies an opaque picture. Source does the same much faster.
    const bool copies
        = operation == QPainter::CompositionMode_SourceIn && !sprite.image.hasAlphaChannel();
    m_painter.setCompositionMode(copies ? QPainter::CompositionMode_Source : operation);
    m_painter.drawImage(device.topLeft(), sprite.image, sprite.source);
}

void PanelCanvas::drawLight(
    const InterfaceImage& image, const QRectF& source, const QRectF& destination)
{
    const QRectF place = fromBottomLeft(lightPlace(image, source, destination), m_content);
    if (!isPaintable(place))
        return;
    // The margins are rounded, not the whole, so that the light lies around the pixels of the
    // piece.
    const QRectF piece = fromBottomLeft(destination, m_content);
    const QRect device
        = onDevice(piece).marginsAdded({ nearestPixel((piece.left() - place.left()) * m_horizontal),
            nearestPixel((piece.top() - place.top()) * m_vertical),
            nearestPixel((place.right() - piece.right()) * m_horizontal),
            nearestPixel((place.bottom() - piece.bottom()) * m_vertical) });
    if (!m_wanted.intersects(device))
        return;
    const DrawnPicture& picture = *image.drawn();
    const QRectF wanted = fromBottomLeft(source, QRectF(QPointF(), image.size()));
    const QImage light = m_sprites.light(picture, wanted.toAlignedRect(), device.size());
    if (light.isNull())
        return;
    m_painter.setCompositionMode(picture.lightMode() == DrawnPicture::LightMode::Glow
            ? QPainter::CompositionMode_SourceOver
            : QPainter::CompositionMode_ColorDodge);
    m_painter.drawImage(device.topLeft(), light);
}

} // namespace kestrel
