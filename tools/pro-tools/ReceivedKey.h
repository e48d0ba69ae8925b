#pragma once

#include <cstdint>
#include <string>

namespace kestrel {

// One key event from the window system.
struct ReceivedKey {
    bool down = false;
    // On X11 the keysym name of the unmodified key; letters as capitals. On macOS the name of the
    // position on an ANSI keyboard, so each key code has one name.
    std::string key;
    std::uint16_t state = 0; // core X modifier mask: on X11 before the event, on macOS with it
    bool repeat = false; // the key was down already
    std::int64_t microseconds = 0; // monotonic
    std::string details {}; // what else the system says, at the end of the line

    // Such as "down S Command repeat=no t=123456". Modifiers are joined with "+" in the order
    // Shift, Control, Option, Command, Lock; "none" when there are none.
    [[nodiscard]] std::string line() const;
    [[nodiscard]] std::string glyphs() const;
};

} // namespace kestrel
