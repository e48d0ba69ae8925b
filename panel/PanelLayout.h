#pragma once

#include "link/ConsoleProtocol.h"

#include <QRectF>

#include <array>
#include <cstddef>
#include <cstdint>

// The places of all items on the panel, in units of its design space: 782 × 220, origin at the
// bottom left, y upwards.
namespace kestrel::PanelLayout {

inline constexpr double Width = 782;
inline constexpr double Height = 220;

inline constexpr std::size_t StoredZones = ConsoleProtocol::Zones;
inline constexpr std::size_t DrawnZones = 8;
inline constexpr std::size_t ZonesPerRow = 4;
inline constexpr std::size_t ZoneLength = ConsoleProtocol::ZoneCharacters;
inline constexpr double CellWidth = 8;
inline constexpr double CellHeight = 13;

inline constexpr std::size_t Knobs = ConsoleProtocol::Knobs;
inline constexpr double KnobBottom = 73;

inline constexpr std::size_t StoredSwitches = 9;
inline constexpr std::size_t Switches = ConsoleProtocol::Lamps;
inline constexpr double SwitchBottom = 38;

enum class Lamp : std::uint8_t { Red, Orange, Green };

struct Switch {
    Lamp lamp;
    double left;
};

// The index is the lamp number. Lamp numbers do not run from left to right.
inline constexpr std::array<Switch, Switches> SwitchTable { {
    { Lamp::Red, 697 },
    { Lamp::Red, 18 },
    { Lamp::Orange, 309 },
    { Lamp::Orange, 406 },
    { Lamp::Orange, 503 },
    { Lamp::Orange, 600 },
    { Lamp::Green, 212 },
    { Lamp::Green, 115 },
} };

// The lamp numbers in the order of their places, from left to right.
inline constexpr auto SwitchesFromLeft = [] {
    std::array<std::size_t, Switches> order {};
    for (std::size_t lamp = 0; lamp < Switches; ++lamp) {
        std::size_t place = 0;
        for (const auto& other : SwitchTable)
            place += other.left < SwitchTable[lamp].left ? 1 : 0;
        order[place] = lamp;
    }
    return order;
}();

[[nodiscard]] inline QRectF cell(std::size_t zone, std::size_t character)
{
    const auto column = static_cast<double>(zone % ZonesPerRow);
    return { 298 + 97 * column + 9 * static_cast<double>(character),
        zone < ZonesPerRow ? 190.0 : 174.0, CellWidth, CellHeight };
}

[[nodiscard]] inline double knobLeft(std::size_t knob)
{
    return 309 + 97 * static_cast<double>(knob);
}

[[nodiscard]] constexpr bool isLit(std::uint8_t switchValue)
{
    return switchValue >= ConsoleProtocol::LampLit;
}

} // namespace kestrel::PanelLayout
