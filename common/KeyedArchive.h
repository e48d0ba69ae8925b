#pragma once

#include "common/ArchiveError.h"
#include "common/ArchiveValue.h"

#include <cstdint>
#include <span>
#include <vector>

// Keyed archives as the framework's own archiver writes them.
namespace kestrel::KeyedArchive {

using Bytes = std::vector<std::uint8_t>;

// A binary archive that has `root` as its root object. Throws ArchiveError for a value that
// holds itself, and for one that unarchivedRoot() would refuse.
[[nodiscard]] Bytes archivedData(const ArchiveValue& root);

// The root object of a binary or XML archive; throws ArchiveError. What is returned holds no
// cycles, is at most ArchiveLimits::Depth deep, and can be archived again.
[[nodiscard]] ArchiveValue unarchivedRoot(std::span<const std::uint8_t> archive);

} // namespace kestrel::KeyedArchive
