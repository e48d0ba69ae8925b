#pragma once

#include "platform/KeyCodes.h"

#include <optional>
#include <span>

// Which key of a Linux keyboard sits where a macOS virtual key code says, whatever the layout.
namespace kestrel::EvdevKeyMap {

struct Pair {
    KeyCode keyCode = 0;
    int evdev = 0; // a KEY_ code of the kernel; the X keycode is 8 higher
};

// One to one; missing for what has no counterpart.
[[nodiscard]] std::optional<int> evdevCode(KeyCode keyCode);
[[nodiscard]] std::optional<KeyCode> keyCode(int evdev);

[[nodiscard]] std::span<const Pair> table();

} // namespace kestrel::EvdevKeyMap
