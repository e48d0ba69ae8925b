#pragma once

#include "platform/KeyCodes.h"

#include <optional>
#include <span>

// Maps macOS virtual key codes to the keys of a Linux keyboard in the same positions. The keyboard
// layout plays no part.
namespace kestrel::EvdevKeyMap {

constexpr int XOffset = 8; // from the KEY_ code of the kernel to the X keycode

struct Pair {
    KeyCode keyCode = 0;
    int evdev = 0; // a KEY_ code of the kernel
};

// The mapping is one to one. No value for a key that has no counterpart.
[[nodiscard]] std::optional<int> evdevCode(KeyCode keyCode);
[[nodiscard]] std::optional<KeyCode> keyCode(int evdev);

[[nodiscard]] std::span<const Pair> table();

} // namespace kestrel::EvdevKeyMap
