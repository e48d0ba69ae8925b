#pragma once

#include <QPainterPath>
#include <QString>

namespace kestrel::artwork {

// Letters of round-ended strokes. Capitals are 6 grid steps high and mostly 4 wide. The shapes come
// from tables in the source, so that a text looks the same on every machine.

inline constexpr double CapitalHeight = 6.0;

// Returns the centre lines of the text. It starts at x = 0, and capitals lie between y = 0 and y =
// 6. Characters without a drawing are left out.
[[nodiscard]] QPainterPath strokesOf(const QString& text, double tracking);

// The distance from the first centre line to the last one.
[[nodiscard]] double widthOf(const QString& text, double tracking);

// How letters lie on whole pixels: their upright and level strokes run from pixel to pixel, so that
// all of them look the same.
struct PixelGrid {
    int capital; // pixels between the upper and the lower centre line of a capital
    int gap; // pixels between the centre lines of neighbouring letters
};

// The same in pixels, as near to the drawn shapes as the grid allows.
[[nodiscard]] QPainterPath strokesOf(const QString& text, PixelGrid grid);
[[nodiscard]] int widthOf(const QString& text, PixelGrid grid);

} // namespace kestrel::artwork
