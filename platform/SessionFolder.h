#pragma once

#include <string>

namespace kestrel {

// The folder for files of the user's session, or for those that only the user may write where the
// system has no such folder. Empty when there is none. Each platform folder defines it once.
[[nodiscard]] std::string sessionFolder();

} // namespace kestrel
