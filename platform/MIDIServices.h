#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

// References to objects of the MIDI services. 0 refers to no object.
using MIDIClient = std::uint32_t;
using MIDIPort = std::uint32_t;
using MIDIEndpoint = std::uint32_t;

struct MIDIPacket {
    std::uint64_t timeStamp = 0; // 0 = now
    std::span<const std::uint8_t> data;
};

// The packets of one delivery, in order. The list is valid only inside the read callback that gets
// it. The bytes of a packet stay in place until the callback asks for the next packet or runs the
// main loop.
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
    std::optional<std::int32_t> uniqueID; // no value when the property cannot be read
};

struct MIDIEntity {
    std::vector<MIDISource> sources;
    std::vector<MIDIEndpoint> destinations;
};

struct MIDIDevice {
    std::optional<std::string> model; // no value when the property cannot be read
    std::vector<MIDIEntity> entities;
};

// The operating system's MIDI services. Every operation is called on the main thread and returns
// within a bounded time, even when the service has stopped answering.
class MIDIServices {
public:
    // The main loop calls both on the main thread, never inside an operation of the services. The
    // packets of a source come in order of arrival. Packets that arrived before a notification are
    // delivered before any task that the notification's callback gives to MainLoop::perform(). One
    // notification may stand for several changes, also of both kinds: its receiver looks for what
    // is there now.
    using NotifyProc = void (*)(const MIDINotification& notification, void* refCon);
    using ReadProc = void (*)(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon);

    virtual ~MIDIServices() = default;

    // No value when the service refuses. The same holds for the ports below.
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
    // After this the port's read callback is not called again, not even with packets that have
    // already arrived.
    virtual void disposePort(MIDIPort port) = 0;

    // The present devices, in the services' own order.
    [[nodiscard]] virtual std::vector<MIDIDevice> devices() = 0;

    // The read callback gets `srcConnRefCon` with each packet list from this source. False when the
    // source cannot be connected.
    [[nodiscard]] virtual bool connectSource(
        MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
        = 0;

    // False when the source no longer answers for its unique ID, which is so after the MIDI service
    // has ended unexpectedly and perhaps told nobody.
    [[nodiscard]] virtual bool answersFor(MIDIEndpoint source, std::int32_t uniqueID) = 0;

    // False when it is certain that the packet is not sent.
    [[nodiscard]] virtual bool send(
        MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
        = 0;

    // `packetsLost` is called on the main thread, from the main loop and never inside an operation,
    // when packets from a connected source may have been lost. All packets of the source that
    // arrived before the loss have been delivered by then, and none that came after it. A service
    // that loses no packets never calls it.
    virtual void setPacketsLost(std::function<void()> packetsLost) = 0;
};

} // namespace kestrel
