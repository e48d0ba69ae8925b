#pragma once

#include "tools/zenta-console/ConsolePackets.h"

#include <chrono>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kestrel::console {

struct Nothing { // an empty line, or one that begins with '#'
    bool operator==(const Nothing&) const = default;
};
struct Send {
    std::vector<Bytes> packets;
    bool operator==(const Send&) const = default;
};
struct SwitchHeartbeat {
    bool on = true;
    bool operator==(const SwitchHeartbeat&) const = default;
};
struct Wait {
    std::chrono::milliseconds duration {};
    bool operator==(const Wait&) const = default;
};
struct ExpectAnswer {
    std::chrono::milliseconds within {};
    bool operator==(const ExpectAnswer&) const = default;
};
struct ExpectListener { // a client is connected to the port that carries the traffic
    std::chrono::milliseconds within {};
    bool operator==(const ExpectListener&) const = default;
};
struct At {
    // Since the script began or an expectation was last met.
    std::chrono::microseconds time {};
    std::string command; // what comes then; a command that parseCommand() takes, and no At
    bool operator==(const At&) const = default;
};
struct Show { // plays the editing scene
    bool operator==(const Show&) const = default;
};
struct Quit {
    bool operator==(const Quit&) const = default;
};
struct Malformed {
    std::string reason;
    std::size_t column = 1; // of the word that is wrong, in bytes from 1
    bool operator==(const Malformed&) const = default;
};

using Command = std::variant<Nothing, Send, SwitchHeartbeat, Wait, ExpectAnswer, ExpectListener, At,
    Show, Quit, Malformed>;

[[nodiscard]] Command parseCommand(std::string_view line);

// A help text with the commands that parseCommand() takes, one a line.
[[nodiscard]] std::string_view commandSummary();

} // namespace kestrel::console
