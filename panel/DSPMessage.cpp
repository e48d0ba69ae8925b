#include "panel/DSPMessage.h"

#include "link/ConsoleProtocol.h"

namespace kestrel {

namespace {
using namespace ConsoleProtocol;

// The first controller number selects the knob for the whole message. The last value wins.
void storeKnob(std::span<const std::uint8_t> data, PanelKnobs& knobs, DSPChange& change)
{
    const std::size_t knob = data[1] & KnobMask;
    for (std::size_t value = 2; value < data.size(); value += 2) {
        knobs[knob] = data[value];
        change.knobs.set(knob);
    }
}

// The values follow the lamp controller. A zone select of two bytes may precede that controller.
void storeSwitches(std::span<const std::uint8_t> data, PanelSwitches& switches, DSPChange& change)
{
    for (std::size_t i = data[1] == LampZoneSelect ? 4 : 2; i < data.size(); i += 2) {
        const std::uint8_t value = data[i];
        const std::size_t lamp = PanelLayout::isLit(value) ? value - LampLit : value;
        if (lamp < PanelLayout::Switches) {
            switches[lamp] = value;
            change.switches.set(lamp);
        }
    }
}
} // namespace

std::optional<DSPChange> storeDSPMessage(
    std::span<const std::uint8_t> data, PanelKnobs& knobs, PanelSwitches& switches)
{
    if (data.size() < 2)
        return std::nullopt;
    DSPChange change;
    const std::uint8_t controller = data[1];
    if ((controller & 0x0F & ~KnobMask) == FirstKnobLow)
        storeKnob(data, knobs, change);
    else if (controller == LampZoneSelect || controller == LampPort)
        storeSwitches(data, switches, change);
    else
        return std::nullopt;
    return change;
}

} // namespace kestrel
