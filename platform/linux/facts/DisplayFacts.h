#pragma once

#include "platform/SystemFacts.h"
#include "platform/linux/x11/KeyLedger.h"

namespace kestrel {

struct DisplayFacts {
    SystemFacts::Display display;
    XKeySet keysDown;
};

// The desktop session, its windows and what is in front. Waits for the X server for a second or so
// at most.
[[nodiscard]] DisplayFacts displayFacts();

} // namespace kestrel
