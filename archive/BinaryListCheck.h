#pragma once

#include "archive/Bytes.h"

namespace kestrel {

// Throws ArchiveError unless every object that the root of the binary property list reaches lies
// inside the bytes, has a known type, and expands within ArchiveLimits, and unless there are at
// most `maxObjects`. libplist follows every offset and reference in a list, so each list must pass
// this check first.
void checkBinaryList(ByteView list, std::size_t maxObjects);

} // namespace kestrel
