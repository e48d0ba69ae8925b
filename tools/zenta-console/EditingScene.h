#pragma once

#include "tools/zenta-console/ConsoleCommand.h"

#include <vector>

namespace kestrel::console {

// What the console sends, and when, while somebody edits an equaliser for a few seconds: a gain and
// a frequency are turned, the page is turned, a switch and the bypass are pressed. It ends with the
// second page on the display.
[[nodiscard]] std::vector<Command> editingScene();

} // namespace kestrel::console
