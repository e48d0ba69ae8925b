#pragma once

#include "archive/ArchiveError.h"
#include "archive/ArchiveValue.h"
#include "archive/Bytes.h"

// Keyed archives as the framework's own archiver writes them.
namespace kestrel::KeyedArchive {

// A binary archive that has `root` as its root object. Throws ArchiveError for a value that
// holds itself, and for one that unarchivedRoot() would refuse.
[[nodiscard]] Bytes archivedData(const ArchiveValue& root);

// The root object of a binary or XML archive; throws ArchiveError. What is returned holds no
// cycles, is at most ArchiveLimits::Depth deep, and can be archived again.
[[nodiscard]] ArchiveValue unarchivedRoot(ByteView archive);

} // namespace kestrel::KeyedArchive
