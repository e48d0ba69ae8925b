#pragma once

#include <optional>
#include <string>

namespace kestrel {

// Another path to the file, in UTF-8, for a path that is not in UTF-8. It is valid as long as this
// process runs, in every process of the user. No value when the file cannot be found. Each platform
// folder defines it once.
[[nodiscard]] std::optional<std::string> utf8PathTo(const char* path);

} // namespace kestrel
