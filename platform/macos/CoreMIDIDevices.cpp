#include "platform/macos/CoreMIDIDevices.h"

#include "platform/macos/CFText.h"

#include <CoreMIDI/CoreMIDI.h>

namespace kestrel::CoreMIDIDevices {

namespace {
std::optional<std::string> model(MIDIDeviceRef device)
{
    CFHolder<CFStringRef> text;
    if (MIDIObjectGetStringProperty(device, kMIDIPropertyModel, text.receive()) != noErr || !text)
        return std::nullopt;
    return CFText::toUtf8(text.get());
}

MIDIEntity entity(MIDIEntityRef reference)
{
    MIDIEntity entity;
    const ItemCount sources = MIDIEntityGetNumberOfSources(reference);
    for (ItemCount i = 0; i < sources; ++i) {
        const MIDIEndpointRef source = MIDIEntityGetSource(reference, i);
        entity.sources.push_back({ .endpoint = source, .uniqueID = uniqueIDOf(source) });
    }
    const ItemCount destinations = MIDIEntityGetNumberOfDestinations(reference);
    for (ItemCount i = 0; i < destinations; ++i)
        entity.destinations.push_back(MIDIEntityGetDestination(reference, i));
    return entity;
}

MIDIDevice device(MIDIDeviceRef reference)
{
    MIDIDevice device { .model = model(reference), .entities = {} };
    const ItemCount entities = MIDIDeviceGetNumberOfEntities(reference);
    for (ItemCount i = 0; i < entities; ++i)
        device.entities.push_back(entity(MIDIDeviceGetEntity(reference, i)));
    return device;
}
} // namespace

std::optional<std::int32_t> uniqueIDOf(MIDIEndpoint endpoint)
{
    SInt32 uniqueID = 0;
    if (MIDIObjectGetIntegerProperty(endpoint, kMIDIPropertyUniqueID, &uniqueID) != noErr)
        return std::nullopt;
    return uniqueID;
}

std::vector<MIDIDevice> snapshot()
{
    std::vector<MIDIDevice> devices;
    const ItemCount count = MIDIGetNumberOfDevices();
    for (ItemCount i = 0; i < count; ++i)
        devices.push_back(device(MIDIGetDevice(i)));
    return devices;
}

} // namespace kestrel::CoreMIDIDevices
