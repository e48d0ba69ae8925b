#pragma once

#include <QImage>

namespace kestrel::artwork {

enum class Link { Offline, Online };

// Draws the picture of the status item, 16 × 16 units.
[[nodiscard]] QImage drawStatusIcon(Link link, int scale);

} // namespace kestrel::artwork
