#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

// References into the MIDI services; 0 names nothing.
using MIDIClient = std::uint32_t;
using MIDIPort = std::uint32_t;
using MIDIEndpoint = std::uint32_t;

struct MIDIPacket {
    std::uint64_t timeStamp = 0; // 0 = now
    std::span<const std::uint8_t> data;
};

// The packets of one delivery, in order; valid only inside the read callback that it is given to.
// The bytes of a packet stay in place until the callback asks for the next one or lets the main
// loop turn.
class MIDIPacketList {
public:
    virtual std::optional<MIDIPacket> next() = 0;

protected:
    ~MIDIPacketList() = default;
};

struct MIDINotification {
    enum MessageID : std::int32_t { SetupChanged = 1, ObjectAdded = 2, ObjectRemoved = 3 };
    enum ObjectType : std::int32_t {
        Other = -1,
        Device = 0,
        Entity = 1,
        Source = 2,
        Destination = 3
    };

    std::int32_t messageID = SetupChanged;
    std::int32_t childType = Other; // only meaningful with ObjectAdded and ObjectRemoved
};

struct MIDISource {
    MIDIEndpoint endpoint = 0;
    std::optional<std::int32_t> uniqueID; // missing when the property cannot be read
};

struct MIDIEntity {
    std::vector<MIDISource> sources;
    std::vector<MIDIEndpoint> destinations;
};

struct MIDIDevice {
    std::optional<std::string> model; // missing when the property cannot be read
    std::vector<MIDIEntity> entities;
};

// The operating system's MIDI services. Every operation is called on the main thread and returns
// within a bounded time, also when the service has stopped answering.
class MIDIServices {
public:
    // Both are called on the main thread, by the main loop and never inside an operation of the
    // services. The packets of a source come in order of arrival. Packets that have arrived before
    // a notification are delivered before anything that its callback performs on the main loop.
    using NotifyProc = void (*)(const MIDINotification& notification, void* refCon);
    using ReadProc = void (*)(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon);

    virtual ~MIDIServices() = default;

    // Missing when the service refuses, as are the ports below.
    [[nodiscard]] virtual std::optional<MIDIClient> createClient(
        std::string_view name, NotifyProc notify, void* refCon)
        = 0;
    virtual void disposeClient(MIDIClient client) = 0;

    [[nodiscard]] virtual std::optional<MIDIPort> createInputPort(
        MIDIClient client, std::string_view name, ReadProc read, void* refCon)
        = 0;
    [[nodiscard]] virtual std::optional<MIDIPort> createOutputPort(
        MIDIClient client, std::string_view name)
        = 0;
    // The port's read callback is not called again, not even with packets that have arrived.
    virtual void disposePort(MIDIPort port) = 0;

    // The devices as they are now, in the services' own order.
    [[nodiscard]] virtual std::vector<MIDIDevice> devices() = 0;

    // `srcConnRefCon` comes back with each packet list from this source. False when the source
    // cannot be connected.
    [[nodiscard]] virtual bool connectSource(
        MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
        = 0;

    // False when the packet is known not to leave.
    [[nodiscard]] virtual bool send(
        MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
        = 0;
};

} // namespace kestrel
