#include "tests/platform/macos/stand-ins/MIDISetup.h"

#include <algorithm>

namespace kestrel::test {

namespace {
template <typename Objects> const auto* find(const Objects& objects, MIDIObjectRef ref)
{
    const auto found = std::find_if(
        objects.begin(), objects.end(), [ref](const auto& each) { return each.ref == ref; });
    return found == objects.end() ? nullptr : &*found;
}
} // namespace

const MIDISetup::Device* MIDISetup::device(MIDIDeviceRef ref) const
{
    return find(devices, ref);
}

const MIDISetup::Entity* MIDISetup::entity(MIDIEntityRef ref) const
{
    for (const Device& device : devices) {
        if (const auto* entity = find(device.entities, ref))
            return entity;
    }
    return nullptr;
}

const MIDISetup::Source* MIDISetup::source(MIDIEndpointRef ref) const
{
    for (const Device& device : devices) {
        for (const Entity& entity : device.entities) {
            if (const auto* source = find(entity.sources, ref))
                return source;
        }
    }
    return nullptr;
}

bool MIDISetup::hasDestination(MIDIEndpointRef ref) const
{
    for (const Device& device : devices) {
        for (const Entity& entity : device.entities) {
            const auto& all = entity.destinations;
            if (std::find(all.begin(), all.end(), ref) != all.end())
                return true;
        }
    }
    return false;
}

MIDIObjectRef MIDISetup::newReference()
{
    static MIDIObjectRef last = 0x1000;
    return ++last;
}

} // namespace kestrel::test
