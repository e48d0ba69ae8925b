#pragma once

#include <QPainterPath>
#include <QString>

namespace kestrel::artwork {

// Engraver's letters: round-ended strokes on a grid whose capitals are 6 high and mostly 4 wide.
// Drawn from our own tables, so that a text looks the same on every machine.

inline constexpr double capitalHeight = 6.0;

// The centre lines of the text, starting at x = 0, capitals between y = 0 and y = 6. Characters
// without a drawing are left out.
[[nodiscard]] QPainterPath strokesOf(const QString& text, double tracking);

// From the first centre line to the last one.
[[nodiscard]] double widthOf(const QString& text, double tracking);

} // namespace kestrel::artwork
