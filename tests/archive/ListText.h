#pragma once

#include "archive/PropertyList.h"

#include <string>

namespace kestrel::test {

// A property list as one line that tells everything of it. libplist writes equal lists in more
// than one way, so that their bytes cannot be compared.
[[nodiscard]] std::string listText(plist_t node);

} // namespace kestrel::test
