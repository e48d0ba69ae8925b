#pragma once

#include "tools/stage/ChildProcess.h"

#include <functional>

namespace kestrel::stage {

// True as soon as `holds` is, which is asked again and again; false when time runs out.
[[nodiscard]] bool comesTrue(const std::function<bool()>& holds, milliseconds timeout);

} // namespace kestrel::stage
