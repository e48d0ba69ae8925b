#pragma once

#include "panel/PanelLayout.h"

#include <bitset>
#include <span>

namespace kestrel {

using PanelZone = std::array<std::uint8_t, PanelLayout::ZoneLength>; // character codes
using PanelZones = std::array<PanelZone, PanelLayout::StoredZones>;

// Writes the records of a display message into the zones that they name, and returns those
// zones. It skips records for zones that do not exist, and a record that the end of the data cuts
// off.
[[nodiscard]] std::bitset<PanelLayout::StoredZones> storeDisplayMessage(
    std::span<const std::uint8_t> data, PanelZones& zones);

} // namespace kestrel
