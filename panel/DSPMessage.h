#pragma once

#include "panel/PanelLayout.h"

#include <bitset>
#include <optional>
#include <span>

namespace kestrel {

using PanelKnobs = std::array<std::uint8_t, PanelLayout::Knobs>; // raw values
using PanelSwitches = std::array<std::uint8_t, PanelLayout::StoredSwitches>;

// What a knob or lamp message wrote, which may be nothing.
struct DSPChange {
    std::bitset<PanelLayout::Knobs> knobs;
    std::bitset<PanelLayout::Switches> switches;
};

// Writes the values of a knob or lamp message; missing when the message is neither.
[[nodiscard]] std::optional<DSPChange> storeDSPMessage(
    std::span<const std::uint8_t> data, PanelKnobs& knobs, PanelSwitches& switches);

} // namespace kestrel
