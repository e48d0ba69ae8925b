#pragma once

#include <QImage>

namespace kestrel::artwork {

// Draws the face of the plug-in panel, 782 × 220 units.
[[nodiscard]] QImage drawPanelBack(int scale);

} // namespace kestrel::artwork
