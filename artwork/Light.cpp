#include "artwork/Light.h"

#include "artwork/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace kestrel::artwork {

namespace {

// Two channels of a pixel in one number each, 32 bits apart, so that both are summed at once.
struct Sums {
    std::uint64_t redBlue = 0;
    std::uint64_t alphaGreen = 0;

    static constexpr std::uint64_t spread(QRgb channels)
    {
        return (channels & 0xFFU) | static_cast<std::uint64_t>(channels & 0xFF0000U) << 16;
    }
    void add(QRgb pixel)
    {
        redBlue += spread(pixel);
        alphaGreen += spread(pixel >> 8);
    }
    void remove(QRgb pixel)
    {
        redBlue -= spread(pixel);
        alphaGreen -= spread(pixel >> 8);
    }
    // The mean of `window` pixels; `reciprocal` is 2^24 / window.
    [[nodiscard]] QRgb mean(std::uint64_t window, std::uint64_t reciprocal) const
    {
        const auto part = [&](std::uint64_t sum) {
            return static_cast<QRgb>(((sum & 0xFFFFFFFFU) + window / 2) * reciprocal >> 24);
        };
        return part(alphaGreen >> 32) << 24 | part(redBlue >> 32) << 16 | part(alphaGreen) << 8
            | part(redBlue);
    }
};

// Applies one box blur to `count` pixels that lie `stride` apart. Pixels beyond the ends count as
// transparent.
void blurLine(QRgb* first, int count, int stride, int radius, std::vector<QRgb>& copy)
{
    const auto length = static_cast<std::size_t>(count);
    const auto reach = static_cast<std::size_t>(radius);
    const std::size_t window = 2 * reach + 1;
    // A margin of transparent pixels on both sides spares the tests for the ends.
    copy.assign(length + 2 * window, 0);
    QRgb* const line = copy.data() + window;
    for (std::size_t i = 0; i < length; ++i)
        line[i] = first[static_cast<std::ptrdiff_t>(i) * stride];
    const std::uint64_t reciprocal = ((1U << 24) + window - 1) / window;
    Sums sums;
    for (std::size_t i = 0; i < std::min(reach, length); ++i)
        sums.add(line[i]);
    for (std::size_t i = 0; i < length; ++i) {
        sums.add(line[i + reach]);
        sums.remove(copy[i + window - reach - 1]);
        first[static_cast<std::ptrdiff_t>(i) * stride] = sums.mean(window, reciprocal);
    }
}

// A transparent picture that covers `area` of the canvas, rounded outwards to whole pixels.
struct Layer {
    QTransform transform; // from units to the pixels of the canvas
    QRect place; // in the pixels of the canvas
    QImage image;
    QPainter painter;

    Layer(Canvas& canvas, const QRectF& area)
        : transform(canvas.painter().transform())
        , place(transform.mapRect(area).toAlignedRect() & withinReach(canvas, area))
        , image(place.size(), QImage::Format_ARGB32_Premultiplied)
    {
        image.fill(Qt::transparent);
        painter.begin(&image);
        enterUnits(painter);
    }

    // What lies farther outside the canvas than the layer is soft cannot be seen.
    static QRect withinReach(Canvas& canvas, const QRectF& area)
    {
        const int reach
            = static_cast<int>(std::ceil(canvas.scale() * std::min(area.width(), area.height())));
        return canvas.pixels().rect().adjusted(-reach, -reach, reach, reach);
    }

    void enterUnits(QPainter& onto) const
    {
        onto.setRenderHint(QPainter::Antialiasing);
        onto.translate(-place.topLeft());
        onto.setTransform(transform, true);
    }

    void blur(const Canvas& canvas, double radius)
    {
        painter.end();
        const int pixels = static_cast<int>(std::lround(radius * canvas.scale() / 2.0));
        image = blurred(image, std::max(pixels, 1));
        painter.begin(&image);
        enterUnits(painter);
    }

    void drawOnto(Canvas& canvas)
    {
        painter.end();
        QPainter& target = canvas.painter();
        target.save();
        target.resetTransform();
        target.drawImage(place.topLeft(), image);
        target.restore();
    }
};

} // namespace

QPainterPath roundedRect(const QRectF& rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

QPainterPath disc(QPointF centre, double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

QImage blurred(const QImage& image, int radius)
{
    QImage result = image;
    const int width = result.width();
    const int height = result.height();
    const int stride = static_cast<int>(result.bytesPerLine() / 4);
    auto* pixels = reinterpret_cast<QRgb*>(result.bits());
    std::vector<QRgb> copy;
    for (int pass = 0; pass < 2; ++pass) {
        for (int y = 0; y < height; ++y)
            blurLine(pixels + static_cast<std::ptrdiff_t>(y) * stride, width, 1, radius, copy);
        for (int x = 0; x < width; ++x)
            blurLine(pixels + x, height, stride, radius, copy);
    }
    return result;
}

void castSoft(
    Canvas& canvas, const QPainterPath& shape, QPointF offset, double radius, QColor colour)
{
    const double reach = 2.0 * radius + 2.0;
    const QPainterPath moved = shape.translated(offset);
    Layer layer(canvas, moved.boundingRect().adjusted(-reach, -reach, reach, reach));
    layer.painter.fillPath(moved, colour);
    layer.blur(canvas, radius);
    layer.drawOnto(canvas);
}

void shadeInside(
    Canvas& canvas, const QPainterPath& shape, QPointF offset, double radius, QColor colour)
{
    const double reach = 2.0 * radius + 2.0 + std::abs(offset.x()) + std::abs(offset.y());
    const QRectF area = shape.boundingRect().adjusted(-reach, -reach, reach, reach);
    Layer layer(canvas, area);
    QPainterPath outside;
    outside.addRect(area.adjusted(-reach, -reach, reach, reach));
    layer.painter.fillPath(outside.subtracted(shape.translated(offset)), colour);
    layer.blur(canvas, radius);
    layer.painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    QImage mask(layer.image.size(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter masking(&mask);
    layer.enterUnits(masking);
    masking.fillPath(shape, Qt::black);
    masking.end();
    layer.painter.resetTransform();
    layer.painter.drawImage(0, 0, mask);
    layer.drawOnto(canvas);
}

void recess(Canvas& canvas, const QPainterPath& shape, QColor floor, double depth)
{
    QPainter& painter = canvas.painter();
    painter.fillPath(shape.translated(0, 1), QColor(255, 255, 255, 26));
    painter.fillPath(shape, floor);
    shadeInside(canvas, shape, QPointF(0, depth), depth * 1.6, QColor(0, 0, 0, 190));
}

} // namespace kestrel::artwork
