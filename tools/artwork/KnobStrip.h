#pragma once

#include <QImage>

namespace kestrel::artwork {

// One 67 × 67 frame for each of the 128 ring values, value 0 on top.
[[nodiscard]] QImage drawKnobStrip(int scale);

// Which of the ring's lamps 1 … 11 a value lights.
[[nodiscard]] bool isRingLampLit(int value, int lamp);

} // namespace kestrel::artwork
