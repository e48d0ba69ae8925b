#pragma once

#include "tools/stage/ChildProcess.h"

#include <functional>

namespace kestrel::stage {

// Asks `holds` again and again. True as soon as it is true, false when the time runs out.
[[nodiscard]] bool comesTrue(const std::function<bool()>& holds, milliseconds timeout);

} // namespace kestrel::stage
