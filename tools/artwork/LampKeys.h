#pragma once

#include <QImage>

namespace kestrel::artwork {

enum class LampColour { Green, Red, Orange };

// Draws two frames of 67 × 67 units: unlit above, lit below. The key fills only the lower part of
// its frame.
[[nodiscard]] QImage drawLampKey(LampColour colour, int scale);

} // namespace kestrel::artwork
