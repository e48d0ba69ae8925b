#pragma once

#include <QPainterPath>

namespace kestrel::artwork {

// The emblem of the product: a hovering kestrel with spread wings, seen from the front. It is
// centred on `centre` and as wide as `span`.
[[nodiscard]] QPainterPath kestrelMark(QPointF centre, double span);

// The same emblem with gaps between its feathers, for sizes in which there is room for them.
[[nodiscard]] QPainterPath featheredKestrelMark(QPointF centre, double span);

} // namespace kestrel::artwork
