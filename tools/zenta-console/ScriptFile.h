#pragma once

#include <optional>
#include <string>

namespace kestrel::console {

// What can be known of a script in a file before it is played.
struct ScriptCheck {
    std::optional<std::string> fault; // where it is no script, and why
    bool beginsSilently = false; // the first command switches the heartbeat off
};

// Reads the rest of the file and goes back to its start.
[[nodiscard]] ScriptCheck checkScript(int descriptor);

// Says where a line is no command, and why: "line 2, column 6: knob 9 5: expected a knob …".
[[nodiscard]] std::string faultText(
    int lineNumber, std::size_t column, const std::string& line, const std::string& reason);

} // namespace kestrel::console
