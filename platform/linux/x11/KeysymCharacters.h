#pragma once

#include <cstdint>
#include <string>

namespace kestrel {

// The characters that stand for a keysym, in UTF-8: what it types, or for a dead key the accent by
// itself. Empty for keysyms without characters and for control characters.
[[nodiscard]] std::string charactersOfKeysym(std::uint32_t keysym);

} // namespace kestrel
