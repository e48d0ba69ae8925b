#pragma once

#include <QList>
#include <QRect>

// Where a window may be, so that it can be seen and dragged whatever has become of the screens.
namespace kestrel {

// What of each screen windows may use.
[[nodiscard]] QList<QRect> availableScreenAreas();

// The frame itself when enough of its top edge to drag it by is on one of the screens; else moved
// onto the nearest one. It keeps its size.
[[nodiscard]] QRect movedOntoScreens(const QRect& frame, const QList<QRect>& screens);

// The same for a frame that may shrink in proportion, which it does when it does not fit.
[[nodiscard]] QRect fittedOntoScreens(const QRect& frame, const QList<QRect>& screens);

} // namespace kestrel
