#pragma once

#include <QImage>

namespace kestrel::artwork {

// Draws the 128 characters of the display, one below the other, code 0 at the top, 8 × 13 units
// each.
[[nodiscard]] QImage drawCharacterAtlas(int scale);

} // namespace kestrel::artwork
