#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>

namespace kestrel::artwork {

class Canvas;

// Soft light and shade. Radii and offsets are in units.

[[nodiscard]] QPainterPath roundedRect(const QRectF& rect, double radius);
[[nodiscard]] QPainterPath disc(QPointF centre, double radius);

// The shape, blurred: a shadow when dark and moved, a glow when bright.
void castSoft(
    Canvas& canvas, const QPainterPath& shape, QPointF offset, double radius, QColor colour);

// Shade along the inside of the shape's edge, moved by `offset`.
void shadeInside(
    Canvas& canvas, const QPainterPath& shape, QPointF offset, double radius, QColor colour);

// A hollow in the sheet: dark floor, shaded from above, its lower lip catching light.
void recess(Canvas& canvas, const QPainterPath& shape, QColor floor, double depth);

// The same picture with every pixel spread over `radius` pixels; premultiplied formats only.
[[nodiscard]] QImage blurred(const QImage& image, int radius);

} // namespace kestrel::artwork
