#pragma once

#include <QList>
#include <QRect>

#include <functional>

// Finds places for windows that keep them in view after the screens have changed.
namespace kestrel {

// The area of each screen that windows may use.
[[nodiscard]] QList<QRect> availableScreenAreas();

// Returns the frame unchanged if all of it is on the screens, even on several. Otherwise moves it
// onto the nearest screen. The size stays, and the upper left corner is in view if the frame is too
// large.
[[nodiscard]] QRect movedOntoScreens(const QRect& frame, const QList<QRect>& screens);

// Does the same for a frame that may shrink when it is larger than the nearest screen. `shrunk`
// returns the size of the frame for the given room.
[[nodiscard]] QRect fittedOntoScreens(const QRect& frame, const QList<QRect>& screens,
    const std::function<QSize(QSize room)>& shrunk);

} // namespace kestrel
