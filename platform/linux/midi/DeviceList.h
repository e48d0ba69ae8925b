#pragma once

#include "platform/MIDIServices.h"
#include "platform/linux/midi/PortPairing.h"

#include <span>
#include <vector>

namespace kestrel {

class EndpointNames;

// Makes each client with MIDI ports a device, and each of its pairs of ports an entity.
[[nodiscard]] std::vector<MIDIDevice> listDevices(
    std::span<const PortListing> ports, EndpointNames& endpoints);

} // namespace kestrel
