#pragma once

#include "archive/Bytes.h"

#include <string>

namespace kestrel::test {

// Reads the bytes as an archive and as a file of defaults. Says what is wrong when something
// accepted cannot be written, or reads back as something else; empty when all is well.
[[nodiscard]] std::string archiveFault(ByteView bytes);

} // namespace kestrel::test
