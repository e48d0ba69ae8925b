#include "platform/linux/midi/DeviceList.h"

#include "platform/linux/midi/EndpointNames.h"

namespace kestrel {

std::vector<MIDIDevice> listDevices(std::span<const PortListing> ports, EndpointNames& endpoints)
{
    std::vector<MIDIDevice> devices;
    for (const PortOwner& owner : pairPorts(ports)) {
        MIDIDevice& device = devices.emplace_back(MIDIDevice { owner.client, {} });
        for (const PortPair& pair : owner.pairs) {
            MIDIEntity& entity = device.entities.emplace_back();
            if (pair.output)
                entity.sources.push_back(
                    { endpoints.endpointNamed(*pair.output), stableIdentifier(*pair.output) });
            if (pair.input)
                entity.destinations.push_back(endpoints.endpointNamed(*pair.input));
        }
    }
    return devices;
}

} // namespace kestrel
