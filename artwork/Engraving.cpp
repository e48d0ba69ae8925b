#include "artwork/Engraving.h"

#include "artwork/Canvas.h"
#include "artwork/NearestPixel.h"
#include "artwork/StrokeFont.h"

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {

constexpr int LowestCapital = 4; // pixels between centre lines

// Lettering in pixels of a canvas.
struct PixelLettering {
    PixelGrid grid {};
    double stroke = 1.0;
    int wholeStroke = 1;
    QColor paint;
};

PixelLettering inPixels(const Canvas& canvas, const Lettering& lettering)
{
    const double step = lettering.size * canvas.scale();
    PixelLettering pixels;
    pixels.grid.capital
        = std::max(LowestCapital, static_cast<int>(std::lround(CapitalHeight * step)));
    pixels.wholeStroke = wholePixels(lettering.stroke * canvas.scale());
    // From two pixels on, soft edges do no harm.
    pixels.stroke
        = pixels.wholeStroke == 1 ? 1.0 : std::max(2.0, lettering.stroke * canvas.scale());
    pixels.grid.gap = std::max(pixels.wholeStroke + 1,
        static_cast<int>(lettering.tracking * pixels.grid.capital / CapitalHeight));
    // Thin strokes look darker than they are.
    const double thin = pixels.wholeStroke == 1 ? std::clamp(1.3 - step, 0.3, 0.8) : 0.0;
    pixels.paint = lettering.paint.lighter(qRound(100.0 + 25.0 * thin));
    return pixels;
}

// Strokes the lines with a dark upper and a lit lower edge.
void cut(QPainter& painter, const QPainterPath& lines, double stroke, double depth, QColor paint)
{
    QPen pen(paint, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    const auto strokeAt = [&](double down, const QColor& colour) {
        pen.setColor(colour);
        painter.strokePath(lines.translated(0.0, down), pen);
    };
    strokeAt(-depth, QColor(0, 0, 0, 150));
    strokeAt(depth, QColor(255, 255, 255, 22));
    strokeAt(0.0, paint);
}

double toPixelCentre(double value)
{
    return std::floor(value) + 0.5;
}

} // namespace

void engrave(Canvas& canvas, const QString& text, QPointF top, const Lettering& lettering)
{
    double x = top.x();
    if (lettering.anchor == Lettering::Anchor::Centre)
        x -= widthOf(text, lettering.tracking) * lettering.size / 2.0;

    QTransform place;
    place.translate(toPixelCentre(x), toPixelCentre(top.y()));
    place.scale(lettering.size, lettering.size);
    cut(canvas.painter(), place.map(strokesOf(text, lettering.tracking)), lettering.stroke,
        EngravedDepth, lettering.paint);
}

double wholeDepth(const Canvas& canvas)
{
    return wholePixels(EngravedDepth * canvas.scale()) / canvas.scale();
}

QSizeF sizeOnPixels(Canvas& canvas, const QString& text, const Lettering& lettering)
{
    const PixelGrid grid = inPixels(canvas, lettering).grid;
    return { widthOf(text, grid) / canvas.painter().transform().m11(),
        grid.capital / canvas.scale() };
}

void engraveOnPixels(Canvas& canvas, const QString& text, QPointF top, const Lettering& lettering)
{
    const PixelLettering pixels = inPixels(canvas, lettering);
    QPainter& painter = canvas.painter();
    QPointF at = painter.transform().map(top + QPointF(0.0, 0.5));
    if (lettering.anchor == Lettering::Anchor::Centre)
        at.rx() -= widthOf(text, pixels.grid) / 2.0;
    // A stroke of an odd number of pixels runs through the middle of pixels.
    const double middle = pixels.wholeStroke % 2 == 1 ? 0.5 : 0.0;
    const auto snapped = [&](double value) { return std::round(value - middle) + middle; };
    const QPainterPath lines
        = strokesOf(text, pixels.grid).translated(snapped(at.x()), snapped(at.y()));

    painter.save();
    painter.resetTransform();
    cut(painter, lines, pixels.stroke, wholeDepth(canvas) * canvas.scale(), pixels.paint);
    painter.restore();
}

void engraveHorizontal(Canvas& canvas, double x, double y, double width)
{
    QPainter& painter = canvas.painter();
    const QRectF cut = canvas.onPixels(QRectF(x, y, width, 1.0));
    painter.fillRect(cut, QColor(0, 0, 0, 170));
    painter.fillRect(cut.translated(0.0, cut.height()), QColor(255, 255, 255, 24));
}

void engraveVertical(Canvas& canvas, double x, double y, double height)
{
    QPainter& painter = canvas.painter();
    const QRectF cut = canvas.onPixels(QRectF(x, y, 1.0, height));
    painter.fillRect(cut, QColor(0, 0, 0, 170));
    painter.fillRect(cut.translated(cut.width(), 0.0), QColor(255, 255, 255, 20));
}

void engraveShape(Canvas& canvas, const QPainterPath& shape, const QColor& paint, double depth)
{
    QPainter& painter = canvas.painter();
    painter.fillPath(shape.translated(0.0, -depth), QColor(0, 0, 0, 150));
    painter.fillPath(shape.translated(0.0, depth), QColor(255, 255, 255, 22));
    painter.fillPath(shape, paint);
}

} // namespace kestrel::artwork
