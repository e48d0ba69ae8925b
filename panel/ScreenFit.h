#pragma once

#include <QList>
#include <QRect>

namespace kestrel {

// The frame itself if its top edge can be grabbed on one of the screens and it is no larger than
// all of them together; else one of its proportions that lies wholly on the nearest screen.
[[nodiscard]] QRect fittedOntoScreens(const QRect& frame, const QList<QRect>& screens);

} // namespace kestrel
