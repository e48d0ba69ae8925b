#pragma once

#include <QRectF>

namespace kestrel {

class InterfaceImage;

// The part of the frame that the picture paints, without a faint glow around it. Both rectangles
// are in units of the picture with the origin at its top left. Empty if nothing is painted.
[[nodiscard]] QRectF paintedPart(const InterfaceImage& image, const QRect& frame);

} // namespace kestrel
