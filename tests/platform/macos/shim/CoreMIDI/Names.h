#pragma once

// Names of types, functions and constant objects of CoreMIDI.

extern "C" {

typedef UInt32 MIDIObjectRef;
typedef MIDIObjectRef MIDIClientRef;
typedef MIDIObjectRef MIDIPortRef;
typedef MIDIObjectRef MIDIDeviceRef;
typedef MIDIObjectRef MIDIEntityRef;
typedef MIDIObjectRef MIDIEndpointRef;
typedef UInt64 MIDITimeStamp;
typedef void (*MIDINotifyProc)(const MIDINotification* message, void* refCon);
typedef void (*MIDIReadProc)(
    const MIDIPacketList* packets, void* readProcRefCon, void* srcConnRefCon);

extern const CFStringRef kMIDIPropertyModel;
extern const CFStringRef kMIDIPropertyUniqueID;

OSStatus MIDIClientCreate(
    CFStringRef name, MIDINotifyProc notify, void* refCon, MIDIClientRef* client);
OSStatus MIDIClientDispose(MIDIClientRef client);
OSStatus MIDIInputPortCreate(
    MIDIClientRef client, CFStringRef name, MIDIReadProc read, void* refCon, MIDIPortRef* port);
OSStatus MIDIOutputPortCreate(MIDIClientRef client, CFStringRef name, MIDIPortRef* port);
OSStatus MIDIPortDispose(MIDIPortRef port);
OSStatus MIDIPortConnectSource(MIDIPortRef port, MIDIEndpointRef source, void* srcConnRefCon);

ItemCount MIDIGetNumberOfDevices(void);
MIDIDeviceRef MIDIGetDevice(ItemCount index);
ItemCount MIDIDeviceGetNumberOfEntities(MIDIDeviceRef device);
MIDIEntityRef MIDIDeviceGetEntity(MIDIDeviceRef device, ItemCount index);
ItemCount MIDIEntityGetNumberOfSources(MIDIEntityRef entity);
MIDIEndpointRef MIDIEntityGetSource(MIDIEntityRef entity, ItemCount index);
ItemCount MIDIEntityGetNumberOfDestinations(MIDIEntityRef entity);
MIDIEndpointRef MIDIEntityGetDestination(MIDIEntityRef entity, ItemCount index);
OSStatus MIDIObjectGetIntegerProperty(MIDIObjectRef object, CFStringRef property, SInt32* value);
OSStatus MIDIObjectGetStringProperty(
    MIDIObjectRef object, CFStringRef property, CFStringRef* value);

OSStatus MIDISourceCreate(MIDIClientRef client, CFStringRef name, MIDIEndpointRef* source);
OSStatus MIDIDestinationCreate(MIDIClientRef client, CFStringRef name, MIDIReadProc read,
    void* refCon, MIDIEndpointRef* destination);
OSStatus MIDIEndpointDispose(MIDIEndpointRef endpoint);
OSStatus MIDIReceived(MIDIEndpointRef source, const MIDIPacketList* packets);
OSStatus MIDISend(MIDIPortRef port, MIDIEndpointRef destination, const MIDIPacketList* packets);
MIDIPacket* MIDIPacketListInit(MIDIPacketList* list);
MIDIPacket* MIDIPacketListAdd(MIDIPacketList* list, ByteCount listSize, MIDIPacket* current,
    MIDITimeStamp time, ByteCount dataSize, const UInt8* data);

} // extern "C"
