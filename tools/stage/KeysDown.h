#pragma once

#include <string>
#include <vector>

namespace kestrel::stage {

// The X keycodes that are logically down on the display. Throws std::runtime_error when the display
// does not answer.
[[nodiscard]] std::vector<int> keysDown(const std::string& display);

} // namespace kestrel::stage
