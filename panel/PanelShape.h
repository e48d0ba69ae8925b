#pragma once

#include <QRect>
#include <QSize>

// The panel always has the proportion of its background picture, 782 : 220.
namespace kestrel {

[[nodiscard]] double panelHeight(double width);

// Allows for less than one pixel of difference, because window managers round sizes differently.
[[nodiscard]] bool isInProportion(QSize content);

// The largest panel that fits into the content, centred. The whole content if it is in proportion.
[[nodiscard]] QRect fittedPanel(QSize content);

} // namespace kestrel
