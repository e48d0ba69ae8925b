#pragma once

#include "link/ConsoleProtocol.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::console {

using Bytes = std::vector<std::uint8_t>;

// As a script names them: keys and knobs as they are engraved, zones and lamps by their bytes.
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

// The console sends the selection and the value as two packets.
[[nodiscard]] std::vector<Bytes> userButton(int button, Motion motion);
[[nodiscard]] std::vector<Bytes> lampMessage(int lamp, Lamp state);

// `text` is filled up with spaces; at most ConsoleProtocol::ZoneCharacters characters of 7 bits.
[[nodiscard]] Bytes displayText(int zone, std::string_view text);
[[nodiscard]] Bytes knobPosition(int knob, std::uint8_t value);

// "90 00 7F"
[[nodiscard]] std::string hexText(std::span<const std::uint8_t> bytes);

} // namespace kestrel::console
