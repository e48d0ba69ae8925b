#pragma once

#include <QPainterPath>

namespace kestrel::artwork {

// The name of the console as filled outlines of letters without serifs. It fills `place` in both
// directions.
[[nodiscard]] QPainterPath zentaWordmark(const QRectF& place);

} // namespace kestrel::artwork
