#pragma once

namespace kestrel::artwork {

// The display's characters: 5 columns of 9 dots, the two lowest rows for descenders.
inline constexpr int dotColumns = 5;
inline constexpr int dotRows = 9;
inline constexpr int characterCount = 128;

// Whether a dot of a character is lit; row 0 is the upper one.
[[nodiscard]] bool isDotLit(int code, int row, int column);

} // namespace kestrel::artwork
