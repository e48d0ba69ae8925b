#pragma once

#include "link/ConsoleProtocol.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::console {

using Bytes = std::vector<std::uint8_t>;

// The numbers in a script: buttons and knobs have the numbers engraved on the console, zones and
// lamps those in the packets.
inline constexpr int FirstButton = 1;
inline constexpr int LastButton = ConsoleProtocol::Keys;
inline constexpr int LastZone = ConsoleProtocol::Zones - 1;
inline constexpr int FirstKnob = 1;
inline constexpr int LastKnob = ConsoleProtocol::Knobs;
inline constexpr int LastLamp = ConsoleProtocol::Lamps - 1;

enum class Motion { Press, Release };
enum class Lamp { Off, On };

[[nodiscard]] Bytes heartbeat();
[[nodiscard]] Bytes heartbeatAnswer();

// Two packets, as the console sends them: first the zone selection, then the value.
[[nodiscard]] std::vector<Bytes> userButton(int button, Motion motion);
[[nodiscard]] std::vector<Bytes> lampMessage(int lamp, Lamp state);

// `text` has at most ConsoleProtocol::ZoneCharacters characters of 7 bits. A shorter text is filled
// up with spaces.
[[nodiscard]] Bytes displayText(int zone, std::string_view text);
[[nodiscard]] Bytes knobPosition(int knob, std::uint8_t value);

// Writes bytes in the form "90 00 7F".
[[nodiscard]] std::string hexText(std::span<const std::uint8_t> bytes);

} // namespace kestrel::console
