#pragma once

#include <cstdint>
#include <string>

namespace kestrel {

// One key event from the X server.
struct ReceivedKey {
    bool down = false;
    std::string key; // keysym name of the unmodified key; letters as capitals
    std::uint16_t state = 0; // core X modifier mask before the event
    bool repeat = false; // the key was down already
    std::int64_t microseconds = 0; // monotonic

    // Such as "down S Command repeat=no t=123456". Modifiers are joined with "+" in the order
    // Shift, Control, Option, Command, Lock; "none" when there are none.
    [[nodiscard]] std::string line() const;
    [[nodiscard]] std::string glyphs() const;
};

} // namespace kestrel
