#include "artwork/Emblem.h"

#include <QPainterPathStroker>
#include <QTransform>

#include <algorithm>

namespace kestrel::artwork {

namespace {

// Shapes are drawn in a box 100 wide.
QPainterPath withMirrored(const QPainterPath& half)
{
    QPainterPath whole = half;
    whole.addPath(QTransform::fromScale(-1, 1).map(half));
    return whole;
}

QPainterPath silhouette()
{
    // Right half from the beak to the end of the tail.
    QPainterPath half;
    half.moveTo(0, -25);
    half.cubicTo(5, -25, 8, -21, 8, -15);
    half.cubicTo(20, -13, 36, -22, 50, -38);
    half.cubicTo(49, -15, 36, 4, 13, 10);
    half.cubicTo(9, 12, 8, 15, 9, 19);
    half.lineTo(15, 40);
    half.quadTo(8, 44, 0, 44);
    half.closeSubpath();
    return withMirrored(half).simplified();
}

void addCurve(QPainterPath& path, QPointF from, QPointF bend, QPointF to)
{
    path.moveTo(from);
    path.quadTo(bend, to);
}

// The lines between the feathers of the wings and of the tail.
QPainterPath quills()
{
    QPainterPath half;
    half.moveTo(9, -3.5); // the edge of the small feathers, from the shoulder outwards
    half.cubicTo(22, -4, 34, -10.5, 43, -24);
    addCurve(half, { 38, -17 }, { 43, -18 }, { 50, -19 });
    addCurve(half, { 32, -11.5 }, { 37, -11 }, { 44, -8 });
    addCurve(half, { 25, -7.5 }, { 29.5, -5 }, { 35.5, 2 });
    addCurve(half, { 17, -5 }, { 20, -1 }, { 23.5, 9 });
    addCurve(half, { 4.6, 22.5 }, { 6.2, 28 }, { 7.8, 35 });
    QPainterPath whole = withMirrored(half);
    addCurve(whole, { 0, 21 }, { 0, 28 }, { 0, 35 });
    return whole;
}

// Fewer of them, with more room between.
QPainterPath fewQuills()
{
    QPainterPath half;
    addCurve(half, { 34, -16 }, { 41, -15 }, { 49, -13 });
    addCurve(half, { 26, -10 }, { 31, -7 }, { 39, 0 });
    addCurve(half, { 17, -6 }, { 20, -2 }, { 25, 9 });
    return withMirrored(half);
}

QPainterPath tailBand()
{
    QPainterPath band;
    addCurve(band, { -18, 34 }, { 0, 39 }, { 18, 34 });
    return band;
}

QPainterPath stroked(const QPainterPath& lines, double width)
{
    QPainterPathStroker pen;
    pen.setWidth(width);
    pen.setCapStyle(Qt::RoundCap);
    return pen.createStroke(lines);
}

QPainterPath placed(const QPainterPath& shape, QPointF centre, double span)
{
    QTransform place;
    place.translate(centre.x(), centre.y());
    place.scale(span / 100.0, span / 100.0);
    return place.map(shape);
}

} // namespace

QPainterPath kestrelMark(QPointF centre, double span)
{
    return placed(silhouette(), centre, span);
}

QPainterPath featheredKestrelMark(QPointF centre, double span, double pixels)
{
    constexpr double NarrowestGap = 1.25; // pixels
    constexpr double FewFrom = 42; // pixels of the span
    constexpr double AllFrom = 80;
    if (pixels < FewFrom)
        return kestrelMark(centre, span);
    const double gap = std::max(1.8, 100.0 * NarrowestGap / pixels);
    const QPainterPath gaps = pixels < AllFrom
        ? stroked(fewQuills(), gap)
        : stroked(quills(), gap).united(stroked(tailBand(), gap * 4.0 / 3.0));
    return placed(silhouette().subtracted(gaps), centre, span);
}

} // namespace kestrel::artwork
