#pragma once

#include <QImage>

namespace kestrel::artwork {

// Draws one frame of 67 × 67 units for each of the 128 ring values, value 0 at the top.
[[nodiscard]] QImage drawKnobStrip(int scale);

// True if the value lights the lamp of the ring. Lamps are 1 to 11.
[[nodiscard]] bool isRingLampLit(int value, int lamp);

} // namespace kestrel::artwork
