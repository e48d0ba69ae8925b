#pragma once

#include <cstdint>
#include <string>

namespace kestrel {

// One key event as the X server delivered it.
struct ReceivedKey {
    bool down = false;
    std::string key; // keysym name of the unmodified key; letters as capitals
    std::uint16_t state = 0; // modifiers before the event, as core X has them
    bool repeat = false; // a down of a key that was down
    std::int64_t microseconds = 0; // monotonic

    // Such as "down S Command repeat=no t=123456". Modifiers are joined with "+" in the order
    // Shift, Control, Option, Command, Lock; "none" when there are none.
    [[nodiscard]] std::string line() const;
    [[nodiscard]] std::string glyphs() const;
};

} // namespace kestrel
