#include "platform/macos/CoreMIDIServices.h"

#include "platform/macos/CFText.h"
#include "platform/macos/CoreMIDIDevices.h"
#include "platform/macos/CoreMIDIPackets.h"

#include <CoreServices/CoreServices.h>

#include <array>
#include <cstddef>
#include <utility>

namespace kestrel {

static_assert(std::int32_t { MIDINotification::ObjectAdded } == kMIDIMsgObjectAdded);
static_assert(std::int32_t { MIDINotification::ObjectRemoved } == kMIDIMsgObjectRemoved);
static_assert(std::int32_t { MIDINotification::Source } == kMIDIObjectType_Source);
static_assert(std::int32_t { MIDINotification::Destination } == kMIDIObjectType_Destination);

namespace {
// Sizes of a packet list in bytes: the part before the data of the first packet, the usual size,
// and the largest size.
constexpr std::size_t ListOverhead
    = offsetof(::MIDIPacketList, packet) + offsetof(::MIDIPacket, data);
constexpr std::size_t UsualListSize = 1024;
constexpr std::size_t LargestListSize = 65536;

// The MIDI server may quit when a process disposes of its last client, and the process then gets no
// new client. A link that is rebuilt disposes of its client, so one more client is kept until the
// process ends.
void keepAClient()
{
    static MIDIClientRef kept = 0;
    if (kept == 0)
        MIDIClientCreate(CFSTR("Kestrel"), nullptr, nullptr, &kept);
}

bool sendList(
    MIDIPort port, MIDIEndpoint destination, const MIDIPacket& packet, std::span<std::byte> memory)
{
    auto* list = reinterpret_cast<::MIDIPacketList*>(memory.data());
    if (!MIDIPacketListAdd(list, memory.size(), MIDIPacketListInit(list), packet.timeStamp,
            packet.data.size(), packet.data.data()))
        return false;
    return MIDISend(port, destination, list) == noErr;
}
} // namespace

CoreMIDIServices::CoreMIDIServices(MainLoop& mainLoop)
    : m_mainLoop(mainLoop)
{
}

CoreMIDIServices::~CoreMIDIServices()
{
    while (!m_clients.empty())
        disposeClient(m_clients.begin()->first);
}

std::optional<MIDIClient> CoreMIDIServices::createClient(
    std::string_view name, NotifyProc notify, void* refCon)
{
    const auto clientName = CFText::fromUtf8(name);
    if (!clientName)
        return std::nullopt;
    const auto proc = [](const ::MIDINotification* message, void* context) {
        MIDINotification notification { .messageID = message->messageID };
        if (message->messageID == kMIDIMsgObjectAdded
            || message->messageID == kMIDIMsgObjectRemoved) {
            notification.childType
                = reinterpret_cast<const MIDIObjectAddRemoveNotification*>(message)->childType;
        }
        // Copies the target, because the callback may dispose of its own client.
        const NotifyTarget target = *static_cast<const NotifyTarget*>(context);
        target.notify(notification, target.refCon);
    };

    auto target = std::make_unique<NotifyTarget>(NotifyTarget { notify, refCon });
    MIDIClientRef created = 0;
    if (MIDIClientCreate(clientName.get(), notify ? +proc : nullptr, target.get(), &created)
        != noErr)
        return std::nullopt;
    keepAClient();
    m_clients.emplace(created, std::move(target));
    if (!m_latencyCritical)
        m_latencyCritical.emplace(Activity::Kind::LatencyCritical);
    return created;
}

void CoreMIDIServices::disposeClient(MIDIClient client)
{
    MIDIClientDispose(client);
    std::erase_if(m_inputPorts, [client](const auto& port) {
        if (port.second.client != client)
            return false;
        shut(port.second);
        return true;
    });
    // CoreMIDI sends notifications on this thread, so none is on its way to the target.
    m_clients.erase(client);
    if (m_clients.empty())
        m_latencyCritical.reset();
}

std::optional<MIDIPort> CoreMIDIServices::createInputPort(
    MIDIClient client, std::string_view name, ReadProc read, void* refCon)
{
    const auto portName = CFText::fromUtf8(name);
    if (!portName)
        return std::nullopt;
    const auto proc = [](const ::MIDIPacketList* list, void* ticket, void* srcConnRefCon) {
        CoreMIDIPackets packets(*list);
        ReadGates::deliver(reinterpret_cast<ReadGates::Ticket>(ticket), packets, srcConnRefCon);
    };

    const auto receive = [](MIDIPacketList& packets, void* inbox, void* srcConnRefCon) {
        static_cast<PacketInbox*>(inbox)->put(packets, srcConnRefCon);
    };

    auto inbox = std::make_shared<PacketInbox>(m_mainLoop, read, refCon);
    const auto ticket = ReadGates::open(receive, inbox.get());
    if (!ticket)
        return std::nullopt;
    MIDIPortRef created = 0;
    if (MIDIInputPortCreate(
            client, portName.get(), proc, reinterpret_cast<void*>(*ticket), &created)
        != noErr) {
        ReadGates::shut(*ticket);
        return std::nullopt;
    }
    m_inputPorts.emplace(created, InputPort { client, *ticket, std::move(inbox) });
    return created;
}

std::optional<MIDIPort> CoreMIDIServices::createOutputPort(MIDIClient client, std::string_view name)
{
    const auto portName = CFText::fromUtf8(name);
    MIDIPortRef created = 0;
    if (!portName || MIDIOutputPortCreate(client, portName.get(), &created) != noErr)
        return std::nullopt;
    return created;
}

void CoreMIDIServices::disposePort(MIDIPort port)
{
    MIDIPortDispose(port);
    if (const auto input = m_inputPorts.extract(port))
        shut(input.mapped());
}

void CoreMIDIServices::shut(const InputPort& port)
{
    ReadGates::shut(port.ticket);
    port.inbox->close();
}

std::vector<MIDIDevice> CoreMIDIServices::devices()
{
    return CoreMIDIDevices::snapshot();
}

bool CoreMIDIServices::connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
{
    return MIDIPortConnectSource(inputPort, source, srcConnRefCon) == noErr;
}

bool CoreMIDIServices::answersFor(MIDIEndpoint source, std::int32_t uniqueID)
{
    return CoreMIDIDevices::uniqueIDOf(source) == uniqueID;
}

bool CoreMIDIServices::send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
{
    const std::size_t size = ListOverhead + packet.data.size();
    if (packet.data.empty() || size > LargestListSize)
        return false;
    if (size <= UsualListSize) {
        alignas(::MIDIPacketList) std::array<std::byte, UsualListSize> memory;
        return sendList(outputPort, destination, packet, memory);
    }
    // Packets end at multiples of four bytes on arm64.
    std::vector<std::byte> memory((size + 3) / 4 * 4);
    return sendList(outputPort, destination, packet, memory);
}

} // namespace kestrel
