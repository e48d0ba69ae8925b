#pragma once

#include "archive/ArchiveError.h"
#include "archive/ArchiveValue.h"
#include "archive/Bytes.h"

// Keyed archives as NSKeyedArchiver writes them.
namespace kestrel::KeyedArchive {

// A binary archive with the root object `root`. Throws ArchiveError for a value that contains
// itself and for a value that unarchivedRoot() would refuse.
[[nodiscard]] Bytes archivedData(const ArchiveValue& root);

// The root object of a binary or XML archive; throws ArchiveError. The returned value has no
// cycles, is at most ArchiveLimits::Depth deep, and can be archived again.
[[nodiscard]] ArchiveValue unarchivedRoot(ByteView archive);

} // namespace kestrel::KeyedArchive
