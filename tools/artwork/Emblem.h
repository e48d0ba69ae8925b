#pragma once

#include <QPainterPath>

namespace kestrel::artwork {

// The family mark: a hovering kestrel, wings spread, seen from the front. It is centred on `centre`
// and as wide as `span`.
[[nodiscard]] QPainterPath kestrelMark(QPointF centre, double span);

} // namespace kestrel::artwork
