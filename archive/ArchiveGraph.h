#pragma once

#include "archive/ArchiveValue.h"

namespace kestrel {

// Throws ArchiveError unless the value, shared parts counted each time that they are reached, is
// free of cycles and within ArchiveLimits, so that it may be walked by plain recursion.
void checkArchiveGraph(const ArchiveValue& root);

} // namespace kestrel
