#pragma once

#include "archive/Bytes.h"

namespace kestrel {

// Throws ArchiveError unless the bytes are an XML property list in the plain form that Foundation
// writes: UTF-8, known elements, properly nested, valid numbers and data, no comments, no entity
// definitions, all within ArchiveLimits, with at most `maxElements`.
void checkXmlList(ByteView list, std::size_t maxElements);

} // namespace kestrel
