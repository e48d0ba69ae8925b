#pragma once

#include <QColor>
#include <QPointF>

#include <cstdint>

namespace kestrel::artwork {

class Canvas;

// The sheet that every face is made of: brushed along x, lit softly from above its middle.
struct BrushedMetal {
    QColor top;
    QColor bottom;
    double grain = 1.0;
    std::uint32_t seed = 1;
};

// Covers the whole canvas; must be the first thing drawn.
void lay(Canvas& canvas, const BrushedMetal& metal);

// The sheet's edge: a hairline of light above, of shade below.
void bevelEdge(Canvas& canvas);

// A countersunk screw; `turn` is the direction of its slot in degrees.
void driveScrew(Canvas& canvas, QPointF centre, double radius, double turn);

} // namespace kestrel::artwork
