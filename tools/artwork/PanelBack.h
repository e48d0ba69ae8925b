#pragma once

#include <QImage>

namespace kestrel::artwork {

// The plug-in panel's face, 782 × 220 units.
[[nodiscard]] QImage drawPanelBack(int scale);

} // namespace kestrel::artwork
