#pragma once

#include "platform/SystemFacts.h"

namespace kestrel {

// The desktop session, its windows and what is in front. Waits for the X server for a second or so
// at most.
[[nodiscard]] SystemFacts::Display displayFacts();

} // namespace kestrel
