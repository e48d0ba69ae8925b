#pragma once

#include <string>

namespace kestrel {

// The folder for files that last no longer than the user's session. No other user can write into
// it. Empty when there is none. Each platform folder defines it once.
[[nodiscard]] std::string sessionFolder();

} // namespace kestrel
