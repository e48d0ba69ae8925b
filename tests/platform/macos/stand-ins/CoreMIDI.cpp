// The functions of CoreMIDI over the MIDI server of the tests.
#include "tests/platform/macos/stand-ins/CFString.h"
#include "tests/platform/macos/stand-ins/Calls.h"
#include "tests/platform/macos/stand-ins/MIDIServer.h"

using kestrel::test::calls;
using kestrel::test::CFString;
using kestrel::test::MIDIServer;

const CFStringRef kMIDIPropertyModel = CFSTR("model");
const CFStringRef kMIDIPropertyUniqueID = CFSTR("uniqueID");

namespace {

MIDIServer& server()
{
    return MIDIServer::instance();
}

// The object at this place of the list, 0 when there is none.
template <typename Objects> MIDIObjectRef at(const Objects& objects, ItemCount index)
{
    return index < objects.size() ? objects[index].ref : 0;
}

} // namespace

OSStatus MIDIClientCreate(
    CFStringRef name, MIDINotifyProc notify, void* refCon, MIDIClientRef* client)
{
    if (calls().fail("MIDIClientCreate"))
        return kMIDIServerStartErr;
    return server().createClient({ CFString::textOf(name), notify, refCon }, client);
}

OSStatus MIDIClientDispose(MIDIClientRef client)
{
    return calls().fail("MIDIClientDispose") ? OSStatus { kMIDIUnknownError }
                                             : server().disposeClient(client);
}

OSStatus MIDIInputPortCreate(
    MIDIClientRef client, CFStringRef, MIDIReadProc read, void* refCon, MIDIPortRef* port)
{
    if (calls().fail("MIDIInputPortCreate"))
        return kMIDIUnknownError;
    return server().createPort({ client, read, refCon }, port);
}

OSStatus MIDIOutputPortCreate(MIDIClientRef client, CFStringRef, MIDIPortRef* port)
{
    if (calls().fail("MIDIOutputPortCreate"))
        return kMIDIUnknownError;
    return server().createPort({ client, nullptr, nullptr }, port);
}

OSStatus MIDIPortDispose(MIDIPortRef port)
{
    return calls().fail("MIDIPortDispose") ? OSStatus { kMIDIUnknownError }
                                           : server().disposePort(port);
}

OSStatus MIDIPortConnectSource(MIDIPortRef port, MIDIEndpointRef source, void* srcConnRefCon)
{
    if (calls().fail("MIDIPortConnectSource"))
        return kMIDIUnknownError;
    return server().connect(port, source, srcConnRefCon);
}

ItemCount MIDIGetNumberOfDevices()
{
    return calls().fail("MIDIGetNumberOfDevices") ? 0 : server().setup.devices.size();
}

MIDIDeviceRef MIDIGetDevice(ItemCount index)
{
    return calls().fail("MIDIGetDevice") ? 0 : at(server().setup.devices, index);
}

ItemCount MIDIDeviceGetNumberOfEntities(MIDIDeviceRef ref)
{
    const bool fails = calls().fail("MIDIDeviceGetNumberOfEntities");
    const auto* const device = server().setup.device(ref);
    return fails || !device ? 0 : device->entities.size();
}

MIDIEntityRef MIDIDeviceGetEntity(MIDIDeviceRef ref, ItemCount index)
{
    const bool fails = calls().fail("MIDIDeviceGetEntity");
    const auto* const device = server().setup.device(ref);
    return fails || !device ? 0 : at(device->entities, index);
}

ItemCount MIDIEntityGetNumberOfSources(MIDIEntityRef ref)
{
    const bool fails = calls().fail("MIDIEntityGetNumberOfSources");
    const auto* const entity = server().setup.entity(ref);
    return fails || !entity ? 0 : entity->sources.size();
}

MIDIEndpointRef MIDIEntityGetSource(MIDIEntityRef ref, ItemCount index)
{
    const bool fails = calls().fail("MIDIEntityGetSource");
    const auto* const entity = server().setup.entity(ref);
    return fails || !entity ? 0 : at(entity->sources, index);
}

ItemCount MIDIEntityGetNumberOfDestinations(MIDIEntityRef ref)
{
    const bool fails = calls().fail("MIDIEntityGetNumberOfDestinations");
    const auto* const entity = server().setup.entity(ref);
    return fails || !entity ? 0 : entity->destinations.size();
}

MIDIEndpointRef MIDIEntityGetDestination(MIDIEntityRef ref, ItemCount index)
{
    const bool fails = calls().fail("MIDIEntityGetDestination");
    const auto* const entity = server().setup.entity(ref);
    return fails || !entity || index >= entity->destinations.size() ? 0
                                                                    : entity->destinations[index];
}

OSStatus MIDIObjectGetIntegerProperty(MIDIObjectRef object, CFStringRef property, SInt32* value)
{
    const bool fails = calls().fail("MIDIObjectGetIntegerProperty");
    const auto* const source = server().setup.source(object);
    if (fails || !source)
        return kMIDIObjectNotFound;
    if (!CFEqual(property, kMIDIPropertyUniqueID) || !source->uniqueID)
        return kMIDIUnknownProperty;
    *value = *source->uniqueID;
    return noErr;
}

OSStatus MIDIObjectGetStringProperty(MIDIObjectRef object, CFStringRef property, CFStringRef* value)
{
    const bool fails = calls().fail("MIDIObjectGetStringProperty");
    const auto* const device = server().setup.device(object);
    if (fails || !device)
        return kMIDIObjectNotFound;
    if (!CFEqual(property, kMIDIPropertyModel) || !device->model)
        return kMIDIUnknownProperty;
    CFRetain(device->model.get());
    *value = device->model.get();
    return noErr;
}

OSStatus MIDISourceCreate(MIDIClientRef client, CFStringRef, MIDIEndpointRef* source)
{
    return server().createEndpoint({ client, nullptr, nullptr }, source);
}

OSStatus MIDIDestinationCreate(MIDIClientRef client, CFStringRef, MIDIReadProc read, void* refCon,
    MIDIEndpointRef* destination)
{
    return server().createEndpoint({ client, read, refCon }, destination);
}

OSStatus MIDIEndpointDispose(MIDIEndpointRef endpoint)
{
    return server().disposeEndpoint(endpoint);
}

OSStatus MIDIReceived(MIDIEndpointRef source, const MIDIPacketList* packets)
{
    return server().play(source, packets);
}

OSStatus MIDISend(MIDIPortRef port, MIDIEndpointRef destination, const MIDIPacketList* packets)
{
    if (calls().fail("MIDISend"))
        return kMIDIUnknownError;
    return server().send(port, destination, packets);
}
