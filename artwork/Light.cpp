#include "artwork/Light.h"

#include "artwork/Canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

namespace kestrel::artwork {

namespace {

// How much of each pixel a shape covers.
struct Coverage {
    std::size_t width;
    std::size_t height;
    std::vector<std::uint8_t> alphas; // line by line, from the top

    explicit Coverage(const QImage& image)
        : width(static_cast<std::size_t>(image.width()))
        , height(static_cast<std::size_t>(image.height()))
    {
        alphas.reserve(width * height);
        for (int y = 0; y < image.height(); ++y) {
            const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x)
                alphas.push_back(static_cast<std::uint8_t>(qAlpha(line[x])));
        }
    }
};

// The mean of the pixels of one box blur. Pixels beyond the ends count as transparent.
class BoxMean {
public:
    explicit BoxMean(std::size_t reach)
        : m_half(static_cast<std::uint32_t>(reach))
        , m_reciprocal(((1U << 24) + 2 * m_half) / (2 * m_half + 1))
    {
    }
    [[nodiscard]] std::uint8_t of(std::uint32_t sum) const
    {
        return static_cast<std::uint8_t>((sum + m_half) * m_reciprocal >> 24);
    }

private:
    std::uint32_t m_half; // of the pixels of the box, rounded down
    std::uint32_t m_reciprocal; // 2^24 / pixels, rounded up
};

void blurLines(Coverage& shape, std::size_t reach)
{
    const BoxMean mean(reach);
    // A margin of transparent pixels on both sides spares the tests for the ends.
    std::vector<std::uint8_t> copy(shape.width + 2 * reach + 1, 0);
    for (std::size_t y = 0; y < shape.height; ++y) {
        const auto line = shape.alphas.begin() + static_cast<std::ptrdiff_t>(y * shape.width);
        std::copy_n(line, shape.width, copy.begin() + static_cast<std::ptrdiff_t>(reach) + 1);
        std::uint32_t sum = std::accumulate(copy.begin(),
            copy.begin() + static_cast<std::ptrdiff_t>(2 * reach + 1), std::uint32_t { 0 });
        for (std::size_t x = 0; x < shape.width; ++x) {
            sum += copy[x + 2 * reach + 1];
            sum -= copy[x];
            line[static_cast<std::ptrdiff_t>(x)] = mean.of(sum);
        }
    }
}

// All columns at once, line by line, as the pixels lie in memory.
void blurColumns(Coverage& shape, std::size_t reach)
{
    const BoxMean mean(reach);
    const std::vector<std::uint8_t> from = shape.alphas;
    std::vector<std::uint32_t> sums(shape.width, 0);
    const auto add = [&](std::size_t y) {
        const std::uint8_t* line = from.data() + y * shape.width;
        for (std::size_t x = 0; x < shape.width; ++x)
            sums[x] += line[x];
    };
    for (std::size_t y = 0; y < std::min(reach, shape.height); ++y)
        add(y);
    for (std::size_t y = 0; y < shape.height; ++y) {
        if (y + reach < shape.height)
            add(y + reach);
        std::uint8_t* line = shape.alphas.data() + y * shape.width;
        for (std::size_t x = 0; x < shape.width; ++x)
            line[x] = mean.of(sums[x]);
        if (y < reach)
            continue;
        const std::uint8_t* last = from.data() + (y - reach) * shape.width;
        for (std::size_t x = 0; x < shape.width; ++x)
            sums[x] -= last[x];
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

    void blur(const Canvas& canvas, double radius, QColor colour)
    {
        painter.end();
        const int pixels = static_cast<int>(std::lround(radius * canvas.scale() / 2.0));
        image = blurred(image, std::max(pixels, 1), colour);
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

QImage blurred(const QImage& shape, int radius, QColor colour)
{
    Coverage coverage(shape);
    for (int pass = 0; pass < 2; ++pass) {
        blurLines(coverage, static_cast<std::size_t>(radius));
        blurColumns(coverage, static_cast<std::size_t>(radius));
    }
    std::array<QRgb, 256> colours {};
    for (int alpha = 0; alpha < 256; ++alpha)
        colours[static_cast<std::size_t>(alpha)]
            = qPremultiply(qRgba(colour.red(), colour.green(), colour.blue(), alpha));
    QImage result(shape.size(), QImage::Format_ARGB32_Premultiplied);
    const std::uint8_t* alpha = coverage.alphas.data();
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x)
            line[x] = colours[*alpha++];
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
    layer.blur(canvas, radius, colour);
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
    layer.blur(canvas, radius, colour);
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
