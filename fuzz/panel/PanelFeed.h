#pragma once

#include "panel/PlugInPanelView.h"

#include <span>
#include <string>

namespace kestrel {

// Feeds a panel with the messages that the bytes are cut into (a length, then so many bytes),
// paints it, and compares its state after each with what a second, plain reading of the protocol
// says.
class PanelFeed {
public:
    PanelFeed();

    // Empty when all went well, else what differed.
    [[nodiscard]] std::string run(std::span<const std::uint8_t> bytes);

private:
    void feed(std::span<const std::uint8_t> message);
    void expectDisplay(std::span<const std::uint8_t> message);
    void expectDSP(std::span<const std::uint8_t> message);
    void paint();
    [[nodiscard]] std::string difference() const;

    PlugInPanelView m_view;
    PanelZones m_zones {};
    PanelKnobs m_knobs {};
    PanelSwitches m_switches {};
};

} // namespace kestrel
