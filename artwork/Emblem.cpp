#include "artwork/Emblem.h"

#include <QTransform>

namespace kestrel::artwork {

QPainterPath kestrelMark(QPointF centre, double span)
{
    // Right half from the beak to the end of the tail, in a box 100 wide.
    QPainterPath half;
    half.moveTo(0, -25);
    half.cubicTo(5, -25, 8, -21, 8, -15);
    half.cubicTo(20, -13, 36, -22, 50, -38);
    half.cubicTo(49, -15, 36, 4, 13, 10);
    half.cubicTo(9, 12, 8, 15, 9, 19);
    half.lineTo(15, 40);
    half.quadTo(8, 44, 0, 44);
    half.closeSubpath();

    QPainterPath whole = half;
    whole.addPath(QTransform::fromScale(-1, 1).map(half));

    QTransform place;
    place.translate(centre.x(), centre.y());
    place.scale(span / 100.0, span / 100.0);
    return place.map(whole.simplified());
}

} // namespace kestrel::artwork
