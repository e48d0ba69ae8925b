#include "tools/artwork/StatusIcons.h"

#include "artwork/Canvas.h"
#include "artwork/Emblem.h"

namespace kestrel::artwork {

namespace {

constexpr QColor Outline(16, 24, 26);
constexpr QColor OnlineFill(112, 226, 208);
constexpr QColor OfflineFill(206, 208, 208);

// The kestrel on its perch, seen from the side, with folded wings.
QPainterPath perchedBird()
{
    QPainterPath bird;
    bird.moveTo(2.0, 5.2);
    bird.cubicTo(2.4, 2.4, 4.4, 1.0, 6.6, 1.0);
    bird.cubicTo(9.0, 1.0, 9.8, 2.8, 10.0, 4.2);
    bird.cubicTo(11.8, 6.0, 13.0, 9.6, 14.0, 15.0);
    bird.lineTo(11.4, 15.0);
    bird.lineTo(10.0, 11.0);
    bird.lineTo(7.2, 11.0);
    bird.cubicTo(4.6, 10.6, 3.8, 8.0, 4.6, 5.6);
    bird.closeSubpath();
    QPainterPath perch;
    perch.addRect(QRectF(1.0, 11.0, 14.0, 2.0));
    return bird.united(perch);
}

void drawOutlined(QPainter& painter, const QPainterPath& shape, QColor fill)
{
    painter.strokePath(shape, QPen(Outline, 1.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(shape, fill);
}

} // namespace

QImage drawStatusIcon(Link link, int scale)
{
    Canvas canvas(QSize(16, 16), scale, Canvas::Backing::Transparent);
    if (link == Link::Online)
        drawOutlined(canvas.painter(), kestrelMark(QPointF(8, 7.8), 14.4), OnlineFill);
    else {
        drawOutlined(canvas.painter(), perchedBird(), OfflineFill);
        canvas.painter().fillRect(QRectF(5, 3, 1, 1), Outline);
    }
    return canvas.take();
}

} // namespace kestrel::artwork
