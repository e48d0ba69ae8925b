#pragma once

#include <QRect>
#include <QSize>

// The one shape that the panel has: 782 : 220, like its background.
namespace kestrel {

[[nodiscard]] double panelHeight(double width);

// Less than a pixel away from it: window managers round as they like.
[[nodiscard]] bool isInProportion(QSize content);

// The largest panel that fits into the content, centred; the content itself when in proportion.
[[nodiscard]] QRect fittedPanel(QSize content);

} // namespace kestrel
