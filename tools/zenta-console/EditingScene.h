#pragma once

#include "tools/zenta-console/ConsoleCommand.h"

#include <vector>

namespace kestrel::console {

// The console's commands and pauses while a user edits an equaliser for a few seconds: the user
// turns a gain and a frequency, turns the page, and presses a switch and the bypass. At the end the
// display shows the second page.
[[nodiscard]] std::vector<Command> editingScene();

} // namespace kestrel::console
