#pragma once

#include <QPainterPath>

namespace kestrel::artwork {

// The name of the console as filled outlines of letters without serifs, which fill `pixels` in both
// directions. Level and upright edges lie on whole pixels if those of `pixels` do. Empty where that
// is too small for letters.
[[nodiscard]] QPainterPath zentaWordmark(const QRectF& pixels);

} // namespace kestrel::artwork
