#include "tools/artwork/Light.h"

#include "tools/artwork/Canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace kestrel::artwork {

namespace {

using Channels = std::array<int, 4>;

Channels split(QRgb pixel)
{
    return { qRed(pixel), qGreen(pixel), qBlue(pixel), qAlpha(pixel) };
}

// Applies one box blur to `count` pixels that lie `stride` apart. Pixels beyond the ends count as
// transparent.
void blurLine(QRgb* first, int count, int stride, int radius, std::vector<QRgb>& copy)
{
    copy.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        copy[static_cast<std::size_t>(i)] = first[static_cast<std::ptrdiff_t>(i) * stride];
    const int window = 2 * radius + 1;
    Channels sum {};
    const auto add = [&](int at, int sign) {
        if (at < 0 || at >= count)
            return;
        const Channels part = split(copy[static_cast<std::size_t>(at)]);
        for (std::size_t c = 0; c < 4; ++c)
            sum[c] += sign * part[c];
    };
    for (int i = 0; i < radius; ++i)
        add(i, 1);
    for (int i = 0; i < count; ++i) {
        add(i + radius, 1);
        add(i - radius - 1, -1);
        const auto mean = [&](std::size_t c) { return (sum[c] + window / 2) / window; };
        first[static_cast<std::ptrdiff_t>(i) * stride] = qRgba(mean(0), mean(1), mean(2), mean(3));
    }
}

// A transparent picture that covers `units` of the canvas, rounded outwards to whole units.
struct Layer {
    QRect units;
    QImage image;
    QPainter painter;

    Layer(const Canvas& canvas, const QRectF& area)
        : units(area.toAlignedRect())
        , image(units.size() * canvas.scale(), QImage::Format_ARGB32_Premultiplied)
    {
        image.fill(Qt::transparent);
        painter.begin(&image);
        enterUnits(canvas.scale());
    }

    void enterUnits(int scale)
    {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        painter.translate(-units.topLeft());
    }

    void blur(const Canvas& canvas, double radius)
    {
        painter.end();
        const int pixels = static_cast<int>(std::lround(radius * canvas.scale() / 2.0));
        image = blurred(image, std::max(pixels, 1));
        painter.begin(&image);
        enterUnits(canvas.scale());
    }

    void drawOnto(Canvas& canvas)
    {
        painter.end();
        QPainter& target = canvas.painter();
        target.drawImage(QRectF(units), image, QRectF(image.rect()));
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
    masking.setRenderHint(QPainter::Antialiasing);
    masking.scale(canvas.scale(), canvas.scale());
    masking.translate(-layer.units.topLeft());
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
