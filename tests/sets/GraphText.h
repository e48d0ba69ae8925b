#pragma once

#include "archive/ArchiveValue.h"

#include <string>

namespace kestrel::test {

// All of a value: each type, every bit, the order of dictionaries and members, and which containers
// are one and the same.
[[nodiscard]] std::string graphText(const ArchiveValue& root);

} // namespace kestrel::test
