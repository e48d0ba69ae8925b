#pragma once

#include <QPainterPath>

namespace kestrel::artwork {

// The emblem of the product: a hovering kestrel with spread wings, seen from the front. It is
// centred on `centre` and as wide as `span`.
[[nodiscard]] QPainterPath kestrelMark(QPointF centre, double span);

// How far the crown of its head and the end of its tail are below the centre, as parts of the span.
// The crown is above it.
inline constexpr double KestrelCrown = -0.25;
inline constexpr double KestrelTail = 0.44;

// The same emblem with gaps between its feathers, as many as there is room for if the span is
// `pixels` wide.
[[nodiscard]] QPainterPath featheredKestrelMark(QPointF centre, double span, double pixels);

} // namespace kestrel::artwork
