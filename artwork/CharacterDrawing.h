#pragma once

#include <QImage>

namespace kestrel::artwork {

// Draws the lit dots of a character, dot by dot, for a cell of that size. Neighbouring dots are
// joined, the more the smaller they are, so that strokes hold together where no gap has room.
[[nodiscard]] QImage drawCharacter(int code, QSize pixels);

// Draws the bloom around the lit dots. `pixels` is the size of the cell; the result is wider
// by `reach` on each side. Null for a blank character.
[[nodiscard]] QImage drawCharacterLight(int code, QSize pixels, QSize reach);

// The shape of a dot that begins at a whole pixel: how much of each pixel it covers, as alpha.
[[nodiscard]] QImage dotShape(double side);

} // namespace kestrel::artwork
