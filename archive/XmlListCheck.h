#pragma once

#include "archive/Bytes.h"

namespace kestrel {

// Throws ArchiveError unless the bytes are an XML property list in the plain form that frameworks
// write: UTF-8, known elements properly nested, numbers and data that are such, no comments, no
// definitions of entities, all within ArchiveLimits.
void checkXmlList(ByteView list);

} // namespace kestrel
