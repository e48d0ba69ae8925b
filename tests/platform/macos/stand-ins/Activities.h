#pragma once

#include "platform/macos/Activity.h"

namespace kestrel::test {

// How many activities of this kind the program holds.
[[nodiscard]] int heldActivities(Activity::Kind kind);

} // namespace kestrel::test
