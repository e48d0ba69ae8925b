#pragma once

#include <QImage>

namespace kestrel::artwork {

// Draws the face of the setup window, 620 × 453 units.
[[nodiscard]] QImage drawSetupBack(int scale);

} // namespace kestrel::artwork
