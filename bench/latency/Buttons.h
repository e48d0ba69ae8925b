#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace kestrel::bench {

// The key that a button types: its name, and the X keycode of its position. The table below begins
// with button 1. The reference programs contain the same table.
struct Button {
    char key;
    std::uint8_t keyCode;
};

inline constexpr std::array<Button, 12> Buttons { { { 'A', 38 }, { 'B', 56 }, { 'C', 54 },
    { 'D', 40 }, { 'E', 26 }, { 'F', 41 }, { 'G', 42 }, { 'H', 43 }, { 'I', 31 }, { 'J', 44 },
    { 'K', 45 }, { 'L', 46 } } };

enum class Direction : std::uint8_t { Release = 0x00, Press = 0x40 };

// One press or release of one button. It describes the console's packet as well as the key event
// that follows.
struct Stroke {
    std::size_t button = 0; // counted from 0
    Direction direction = Direction::Press;

    [[nodiscard]] std::uint8_t code() const
    {
        return static_cast<std::uint8_t>(button | static_cast<std::uint8_t>(direction));
    }
    friend bool operator==(const Stroke&, const Stroke&) = default;
};

// Whether the console sends the two controllers of a stroke in two packets, or in one packet with
// running status.
enum class PressForm { TwoPackets, OnePacket };

// Stroke number n of the steady stream, which presses and releases one button after the other.
constexpr Stroke strokeOfStream(std::size_t n)
{
    return { n / 2 % Buttons.size(), n % 2 == 0 ? Direction::Press : Direction::Release };
}

constexpr std::optional<std::size_t> buttonOfKeyCode(std::uint8_t keyCode)
{
    for (std::size_t i = 0; i < Buttons.size(); ++i) {
        if (Buttons[i].keyCode == keyCode)
            return i;
    }
    return {};
}

} // namespace kestrel::bench
