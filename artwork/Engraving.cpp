#include "artwork/Engraving.h"

#include "artwork/Canvas.h"
#include "artwork/StrokeFont.h"

#include <cmath>

namespace kestrel::artwork {

namespace {

double toPixelCentre(double value)
{
    return std::floor(value) + 0.5;
}

} // namespace

double engravedWidth(const QString& text, const Lettering& lettering)
{
    return widthOf(text, lettering.tracking) * lettering.size;
}

void engrave(Canvas& canvas, const QString& text, QPointF top, const Lettering& lettering)
{
    double x = top.x();
    if (lettering.anchor == Lettering::Anchor::Centre)
        x -= engravedWidth(text, lettering) / 2.0;

    QTransform place;
    place.translate(toPixelCentre(x), toPixelCentre(top.y()));
    place.scale(lettering.size, lettering.size);
    const QPainterPath lines = place.map(strokesOf(text, lettering.tracking));

    QPainter& painter = canvas.painter();
    QPen pen(lettering.paint, lettering.stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    const auto strokeAt = [&](double down, const QColor& colour) {
        pen.setColor(colour);
        painter.strokePath(lines.translated(0.0, down), pen);
    };
    strokeAt(-0.8, QColor(0, 0, 0, 150));
    strokeAt(0.8, QColor(255, 255, 255, 22));
    strokeAt(0.0, lettering.paint);
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

void engraveShape(Canvas& canvas, const QPainterPath& shape, const QColor& paint)
{
    QPainter& painter = canvas.painter();
    painter.fillPath(shape.translated(0.0, -0.8), QColor(0, 0, 0, 150));
    painter.fillPath(shape.translated(0.0, 0.8), QColor(255, 255, 255, 22));
    painter.fillPath(shape, paint);
}

} // namespace kestrel::artwork
