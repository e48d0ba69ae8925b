#pragma once

namespace kestrel::artwork {

// The characters of the display: 5 columns of 9 dots. The two lowest rows are for descenders.
inline constexpr int DotColumns = 5;
inline constexpr int DotRows = 9;
inline constexpr int CharacterCount = 128;

// True if the dot of the character is lit. Row 0 is the top row.
[[nodiscard]] bool isDotLit(int code, int row, int column);

} // namespace kestrel::artwork
