#pragma once

#include "archive/Bytes.h"

namespace kestrel {

// Throws ArchiveError unless every part of the binary property list that can be reached from its
// root lies inside the bytes, is of a known kind, and expands within ArchiveLimits. libplist
// follows whatever a list says, so none may reach it unchecked.
void checkBinaryList(ByteView list);

} // namespace kestrel
