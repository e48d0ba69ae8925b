#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>

namespace kestrel::artwork {

class Canvas;

// Draws soft light and shade. Radii and offsets are in units.

[[nodiscard]] QPainterPath roundedRect(const QRectF& rect, double radius);
[[nodiscard]] QPainterPath disc(QPointF centre, double radius);

// Draws the blurred shape. A dark colour with an offset makes a shadow, a bright one makes a glow.
void castSoft(
    Canvas& canvas, const QPainterPath& shape, QPointF offset, double radius, QColor colour);

// Draws shade along the inner edge of the shape, moved by `offset`.
void shadeInside(
    Canvas& canvas, const QPainterPath& shape, QPointF offset, double radius, QColor colour);

// Draws a hollow in the sheet: a dark floor, shaded from above, with light on its lower edge.
void recess(Canvas& canvas, const QPainterPath& shape, QColor floor, double depth);

// Returns the shape with every pixel's alpha spread over `radius` pixels, all in one opaque colour.
// `shape` is premultiplied, and so is the result.
[[nodiscard]] QImage blurred(const QImage& shape, int radius, QColor colour);

} // namespace kestrel::artwork
