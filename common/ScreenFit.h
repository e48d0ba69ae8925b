#pragma once

#include <QList>
#include <QRect>

#include <functional>

// Where a window may be, so that all of it is in view whatever has become of the screens.
namespace kestrel {

// What of each screen windows may use.
[[nodiscard]] QList<QRect> availableScreenAreas();

// The frame itself when all of it is on the screens, be it on several; else moved onto the nearest
// one. It keeps its size: the upper left corner of a frame that is too large is in view.
[[nodiscard]] QRect movedOntoScreens(const QRect& frame, const QList<QRect>& screens);

// The same for a frame that may shrink when it is larger than the nearest screen. `shrunk` gives
// the size that it takes in less room than it has now.
[[nodiscard]] QRect fittedOntoScreens(const QRect& frame, const QList<QRect>& screens,
    const std::function<QSize(QSize room)>& shrunk);

} // namespace kestrel
