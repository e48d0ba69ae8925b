#pragma once

#include "tests/platform/macos/stand-ins/MIDISetup.h"
#include "tests/platform/macos/stand-ins/ReceiveThread.h"

#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace kestrel::test {

// The MIDI server as one process sees it. Main thread only, except for play().
class MIDIServer {
public:
    struct Client {
        std::u16string name;
        MIDINotifyProc notify;
        void* refCon;
    };
    struct Port {
        MIDIClientRef client;
        MIDIReadProc read; // null for an output port
        void* refCon;
    };
    struct VirtualEndpoint {
        MIDIClientRef client;
        MIDIReadProc read; // null for a source
        void* refCon;
    };
    struct Sent {
        MIDIPortRef port;
        MIDIEndpointRef destination;
        std::vector<unsigned char> data; // of all packets of the list
    };

    static MIDIServer& instance();

    // A device whose entities have so many sources and destinations each. The clients are notified.
    MIDIDeviceRef addDevice(
        CFStringRef model, std::size_t entities, std::size_t sources, std::size_t destinations);
    void removeDevice(MIDIDeviceRef device);

    // Calls the notification callbacks, as the run loop of the main thread does.
    void runNotifications();

    // What a source plays is under way to the ports that are connected at this moment.
    OSStatus play(MIDIEndpointRef source, const MIDIPacketList* packets);
    OSStatus send(MIDIPortRef port, MIDIEndpointRef destination, const MIDIPacketList* packets);

    // These change the state under the lock, because play() reads it on other threads.
    OSStatus createClient(Client client, MIDIClientRef* created);
    OSStatus disposeClient(MIDIClientRef client);
    OSStatus createPort(Port port, MIDIPortRef* created);
    OSStatus disposePort(MIDIPortRef port);
    OSStatus createEndpoint(VirtualEndpoint endpoint, MIDIEndpointRef* created);
    OSStatus disposeEndpoint(MIDIEndpointRef endpoint);
    OSStatus connect(MIDIPortRef port, MIDIEndpointRef source, void* srcConnRefCon);

    MIDISetup setup;
    ReceiveThread receiveThread;
    std::vector<Sent> sent;
    std::map<MIDIClientRef, Client> clients;
    std::map<MIDIPortRef, Port> ports;

private:
    struct Connection {
        MIDIPortRef port;
        MIDIEndpointRef source;
        void* srcConnRefCon;
    };

    void notify(MIDINotificationMessageID message, MIDIObjectRef parent, MIDIObjectType parentType,
        MIDIObjectRef child, MIDIObjectType childType);

    std::mutex m_mutex;
    std::map<MIDIEndpointRef, VirtualEndpoint> m_virtual;
    std::vector<Connection> m_connections;
    // The message for one client; the memory has exactly the size that the message states.
    std::deque<std::pair<MIDIClientRef, std::vector<unsigned char>>> m_notifications;
    bool m_gone = false; // it quits with the last client, and the process gets no new one
};

} // namespace kestrel::test
