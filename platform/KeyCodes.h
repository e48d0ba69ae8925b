#pragma once

#include <cstdint>

namespace kestrel {

// A macOS virtual key code. It names a key position, independent of the keyboard layout.
using KeyCode = std::uint16_t;

// The modifier flags of a macOS keyboard event.
using ModifierFlags = std::uint32_t;

namespace Modifier {
inline constexpr ModifierFlags CapsLock = 0x10000;
inline constexpr ModifierFlags Shift = 0x20000;
inline constexpr ModifierFlags Control = 0x40000;
inline constexpr ModifierFlags Option = 0x80000;
inline constexpr ModifierFlags Command = 0x100000;
inline constexpr ModifierFlags Used = Shift | Control | Option | Command;
} // namespace Modifier

// Key codes of the left-hand modifier keys.
namespace ModifierKey {
inline constexpr KeyCode Command = 55;
inline constexpr KeyCode Shift = 56;
inline constexpr KeyCode Option = 58;
inline constexpr KeyCode Control = 59;
} // namespace ModifierKey

} // namespace kestrel
