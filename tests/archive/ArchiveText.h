#pragma once

#include "archive/ArchiveValue.h"

#include <string>

namespace kestrel::test {

// A value as one line that tells everything of it, types of numbers included; the same line as
// the GNUstep peer prints for the kinds that it knows. For values without cycles.
[[nodiscard]] std::string archiveText(const ArchiveValue& value);

} // namespace kestrel::test
