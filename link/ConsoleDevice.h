#pragma once

#include <cstddef>
#include <string_view>

// How the console is found among the MIDI devices.
namespace kestrel::ConsoleDevice {

inline constexpr std::string_view Model = "ZENTA";
// The index of the entity whose ports carry the traffic: the fifth pair.
inline constexpr std::size_t ControlSurfaceEntity = 4;

} // namespace kestrel::ConsoleDevice
