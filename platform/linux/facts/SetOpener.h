#pragma once

#include <optional>
#include <string>

namespace kestrel {

// The desktop entry of the program that opens sets of assignments, as xdg-mime names it. No value
// when none is registered or nobody can tell.
[[nodiscard]] std::optional<std::string> openerOfSets();

} // namespace kestrel
