#pragma once

#include "archive/ArchiveValue.h"

#include <optional>

namespace kestrel::fuzz {

// The line that the peer prints for a value. No value for what the peer does not know or cannot
// hold: data, other objects than a set, keys that are equal for it.
[[nodiscard]] std::optional<QString> peerText(const ArchiveValue& value);

} // namespace kestrel::fuzz
