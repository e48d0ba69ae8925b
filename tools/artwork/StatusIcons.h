#pragma once

#include <QImage>

namespace kestrel::artwork {

enum class Link { Offline, Online };

// The status item's picture, 16 × 16 units.
[[nodiscard]] QImage drawStatusIcon(Link link, int scale);

} // namespace kestrel::artwork
