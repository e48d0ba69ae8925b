#pragma once

#include <optional>
#include <string>
#include <system_error>

namespace kestrel::console {

// Reads the rest of the file and goes back to its start. Says where it is no script, and why; no
// value if it is one.
[[nodiscard]] std::optional<std::string> faultOfScript(int descriptor);

// Says where a line is no command, and why: "line 2, column 6: knob 9 5: expected a knob …".
[[nodiscard]] std::string faultText(
    int lineNumber, std::size_t column, const std::string& line, const std::string& reason);

// Says why a script cannot be read.
[[nodiscard]] std::string unreadableText(std::error_code error);

} // namespace kestrel::console
