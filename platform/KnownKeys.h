#pragma once

#include "platform/KeyCodes.h"

namespace kestrel {

// True if keyboards of this system have a key with that code. Each platform folder defines it once.
[[nodiscard]] bool hasKeyOnKeyboards(KeyCode key);

} // namespace kestrel
