#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::console {

using Bytes = std::vector<std::uint8_t>;

inline constexpr int FirstButton = 1;
inline constexpr int LastButton = 12;
inline constexpr int LastZone = 9;
inline constexpr std::size_t CharactersPerZone = 10;
inline constexpr int FirstKnob = 1;
inline constexpr int LastKnob = 4;
inline constexpr int LastLamp = 7;

enum class Motion { Press, Release };
enum class Lamp { Off, On };

[[nodiscard]] Bytes heartbeat();
[[nodiscard]] Bytes heartbeatAnswer();

// The console sends the selection and the value as two packets.
[[nodiscard]] std::vector<Bytes> userButton(int button, Motion motion);
[[nodiscard]] std::vector<Bytes> lampMessage(int lamp, Lamp state);

// `text` is filled up with spaces; at most CharactersPerZone characters of 7 bits.
[[nodiscard]] Bytes displayText(int zone, std::string_view text);
[[nodiscard]] Bytes knobPosition(int knob, std::uint8_t value);

// "90 00 7F"
[[nodiscard]] std::string hexText(std::span<const std::uint8_t> bytes);

} // namespace kestrel::console
