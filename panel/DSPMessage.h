#pragma once

#include "panel/PanelLayout.h"

#include <bitset>
#include <optional>
#include <span>

namespace kestrel {

using PanelKnobs = std::array<std::uint8_t, PanelLayout::Knobs>; // raw values
using PanelSwitches = std::array<std::uint8_t, PanelLayout::StoredSwitches>;

// The knobs and lamps whose values a message wrote. A message may write none.
struct DSPChange {
    std::bitset<PanelLayout::Knobs> knobs;
    std::bitset<PanelLayout::Switches> switches;
};

// Writes the values of a knob or lamp message. No value when the message is neither.
[[nodiscard]] std::optional<DSPChange> storeDSPMessage(
    std::span<const std::uint8_t> data, PanelKnobs& knobs, PanelSwitches& switches);

} // namespace kestrel
