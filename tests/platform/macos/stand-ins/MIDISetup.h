#pragma once

#include "platform/macos/CFHolder.h"

#include <CoreMIDI/CoreMIDI.h>

#include <optional>
#include <vector>

namespace kestrel::test {

// The tree of devices, entities and endpoints. A reference is never used twice.
struct MIDISetup {
    struct Source {
        MIDIEndpointRef ref;
        std::optional<SInt32> uniqueID;
    };
    struct Entity {
        MIDIEntityRef ref;
        std::vector<Source> sources;
        std::vector<MIDIEndpointRef> destinations;
    };
    struct Device {
        MIDIDeviceRef ref;
        CFHolder<CFStringRef> model; // null: without this property
        std::vector<Entity> entities;
    };

    std::vector<Device> devices;

    // Null when there is no such object, or no longer.
    [[nodiscard]] const Device* device(MIDIDeviceRef ref) const;
    [[nodiscard]] const Entity* entity(MIDIEntityRef ref) const;
    [[nodiscard]] const Source* source(MIDIEndpointRef ref) const;
    [[nodiscard]] bool hasDestination(MIDIEndpointRef ref) const;

    [[nodiscard]] static MIDIObjectRef newReference();
};

} // namespace kestrel::test
