#pragma once

#include "archive/ArchiveValue.h"

namespace kestrel {

// Throws ArchiveError if the value contains itself or exceeds ArchiveLimits. A shared part counts
// each time it is reached. A value that passes can be walked by plain recursion.
void checkArchiveGraph(const ArchiveValue& root);

} // namespace kestrel
