#pragma once

#include <QColor>
#include <QPointF>

#include <cstdint>

namespace kestrel::artwork {

class Canvas;

// The metal sheet of every face: brushed along x, with soft light from above its middle.
struct BrushedMetal {
    QColor top;
    QColor bottom;
    double grain = 1.0;
    std::uint32_t seed = 1;
};

// Covers the whole canvas. Call it before anything else is drawn.
void lay(Canvas& canvas, const BrushedMetal& metal);

// Draws the edge of the sheet: a light hairline at the top, a dark one at the bottom.
void bevelEdge(Canvas& canvas);

// Draws a countersunk screw. `turn` is the direction of its slot in degrees.
void driveScrew(Canvas& canvas, QPointF centre, double radius, double turn);

} // namespace kestrel::artwork
