#pragma once

#include <string>

namespace kestrel {

// The folder for files of the user's session. Where the system has none, it is a folder that only
// the user may write. Empty when there is none. Each platform folder defines it once.
[[nodiscard]] std::string sessionFolder();

} // namespace kestrel
