#pragma once

#include <QImage>

namespace kestrel::artwork {

// The setup window's face, 620 × 453 units.
[[nodiscard]] QImage drawSetupBack(int scale);

} // namespace kestrel::artwork
