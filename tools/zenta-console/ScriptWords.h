#pragma once

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

// Reads the words and the numbers of a line of a script. What it returns lies in the line.
namespace kestrel::console {

// A year. kestrelctl may record for months.
inline constexpr int MaxSeconds = 366 * 24 * 3600;

// Without blanks around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);
// Cuts the next word off the front of `text` and returns it. Empty when there is no further word.
std::string_view takeWord(std::string_view& text);
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view text);

[[nodiscard]] std::optional<int> parseNumber(std::string_view text, int base = 10);
// Reads a decimal number, or a hexadecimal one after 0x. No value outside `least` to `most`.
[[nodiscard]] std::optional<int> numberBetween(std::string_view text, int least, int most);
// Reads up to MaxSeconds with up to six digits after the point.
[[nodiscard]] std::optional<std::chrono::microseconds> parseSeconds(std::string_view text);

} // namespace kestrel::console
