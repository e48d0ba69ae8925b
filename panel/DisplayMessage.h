#pragma once

#include "panel/PanelLayout.h"

#include <bitset>
#include <span>

namespace kestrel {

using PanelZone = std::array<std::uint8_t, PanelLayout::ZoneLength>; // character codes
using PanelZones = std::array<PanelZone, PanelLayout::StoredZones>;

// Writes the records of a large-display message into the zones they name and tells which these
// were. Records for other zones are skipped, one that is cut off by the end of the data is ignored.
[[nodiscard]] std::bitset<PanelLayout::StoredZones> storeDisplayMessage(
    std::span<const std::uint8_t> data, PanelZones& zones);

} // namespace kestrel
