#pragma once

// Structures and constants of CoreMIDI, in types of the language.

#pragma pack(push, 4)
struct MIDIPacket {
    unsigned long long timeStamp;
    unsigned short length;
    unsigned char data[256];
};

struct MIDIPacketList {
    unsigned int numPackets;
    MIDIPacket packet[1];
};
#pragma pack(pop)

enum MIDINotificationMessageID : int {
    kMIDIMsgSetupChanged = 1,
    kMIDIMsgObjectAdded = 2,
    kMIDIMsgObjectRemoved = 3,
    kMIDIMsgPropertyChanged = 4,
};

enum MIDIObjectType : int {
    kMIDIObjectType_Other = -1,
    kMIDIObjectType_Device = 0,
    kMIDIObjectType_Entity = 1,
    kMIDIObjectType_Source = 2,
    kMIDIObjectType_Destination = 3,
};

struct MIDINotification {
    MIDINotificationMessageID messageID;
    unsigned int messageSize;
};

struct MIDIObjectAddRemoveNotification {
    MIDINotificationMessageID messageID;
    unsigned int messageSize;
    unsigned int parent;
    MIDIObjectType parentType;
    unsigned int child;
    MIDIObjectType childType;
};

enum : int {
    kMIDIInvalidClient = -10830,
    kMIDIInvalidPort = -10831,
    kMIDIUnknownEndpoint = -10834,
    kMIDIUnknownProperty = -10835,
    kMIDIServerStartErr = -10839,
    kMIDIObjectNotFound = -10842,
    kMIDIUnknownError = -10845,
};
