#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace kestrel::fuzz {

// Each target defines this function. It hands the input to the code under test and says what is
// wrong with the result. Empty when nothing is.
[[nodiscard]] std::string fault(std::span<const std::uint8_t> input);

} // namespace kestrel::fuzz
