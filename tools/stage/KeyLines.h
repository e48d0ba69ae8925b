#pragma once

#include <string>
#include <string_view>

// Reads what the workstation stand-in prints.
namespace kestrel::stage {

// True for its lines about keys; it prints other lines too.
[[nodiscard]] bool isKeyLine(std::string_view line);

// Leaves out the time and the usual values:
// "down S Command repeat=no t=123" becomes "down S Command", "up S none repeat=no t=124" "up S".
[[nodiscard]] std::string briefKeyLine(std::string_view line);

} // namespace kestrel::stage
