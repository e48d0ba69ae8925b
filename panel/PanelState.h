#pragma once

#include "panel/DSPMessage.h"
#include "panel/DisplayMessage.h"

#include <optional>

namespace kestrel {

// All values that the panel shows.
struct PanelState {
    std::optional<PanelZones> zones; // none before the first message
    PanelKnobs knobs {};
    PanelSwitches switches {};
};

} // namespace kestrel
