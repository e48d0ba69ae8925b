#include "tools/zenta-console/coremidi/CoreMIDIPorts.h"

#include "platform/macos/CFText.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace kestrel::console {

namespace {
constexpr std::size_t ListOverhead
    = offsetof(::MIDIPacketList, packet) + offsetof(::MIDIPacket, data);

void require(OSStatus status, const std::string& what)
{
    if (status != noErr)
        throw std::runtime_error("CoreMIDI makes no " + what + ": error " + std::to_string(status));
}

std::uint64_t monotonicUs()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}
} // namespace

CoreMIDIPorts::CoreMIDIPorts(const std::string& name, int pairs)
{
    if (::pipe(m_wakeup) != 0)
        throw std::runtime_error("there is no pipe");
    for (const int end : m_wakeup)
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    require(MIDIClientCreate(CFText::fromUtf8(name).get(), nullptr, nullptr, &m_client), "client");
    for (int pair = 1; pair <= pairs; ++pair)
        createPair(name, pair);
}

// The disposal of the client disposes of its endpoints.
CoreMIDIPorts::~CoreMIDIPorts()
{
    MIDIClientDispose(m_client);
    ::close(m_wakeup[0]);
    ::close(m_wakeup[1]);
}

void CoreMIDIPorts::createPair(const std::string& name, int pair)
{
    const std::string port = name + " midi_" + std::to_string(pair);
    MIDIEndpointRef source = 0;
    require(MIDISourceCreate(m_client, CFText::fromUtf8(port).get(), &source), port);
    m_sources.push_back(source);

    const auto proc = [](const ::MIDIPacketList* list, void* context, void*) {
        const auto& input = *static_cast<const Input*>(context);
        input.ports->receive(*list, input.pair);
    };
    m_inputs.push_back({ this, pair });
    MIDIEndpointRef destination = 0;
    require(MIDIDestinationCreate(m_client, CFText::fromUtf8(port + "_in").get(), proc,
                &m_inputs.back(), &destination),
        port + "_in");
}

void CoreMIDIPorts::receive(const ::MIDIPacketList& list, int pair)
{
    const std::uint64_t now = monotonicUs();
    {
        const std::lock_guard lock(m_mutex);
        const ::MIDIPacket* packet = &list.packet[0];
        for (UInt32 i = 0; i < list.numPackets; ++i) {
            m_arrivals.push_back({ pair, now, Bytes(packet->data, packet->data + packet->length) });
            packet = MIDIPacketNext(packet);
        }
    }
    m_hasHeard.store(true);
    [[maybe_unused]] const auto written = ::write(m_wakeup[1], "", 1);
}

void CoreMIDIPorts::lower()
{
    char taken[256];
    while (::read(m_wakeup[0], taken, sizeof taken) > 0) { }
}

bool CoreMIDIPorts::send(const Bytes& packet)
{
    // Packets end at multiples of four bytes on arm64.
    std::vector<std::byte> memory((ListOverhead + packet.size() + 3) / 4 * 4);
    auto* list = reinterpret_cast<::MIDIPacketList*>(memory.data());
    return MIDIPacketListAdd(
               list, memory.size(), MIDIPacketListInit(list), 0, packet.size(), packet.data())
        && MIDIReceived(m_sources[static_cast<std::size_t>(trafficPair()) - 1], list) == noErr;
}

std::vector<ConsolePorts::Arrival> CoreMIDIPorts::takeArrivals()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_arrivals, {});
}

int CoreMIDIPorts::trafficPair() const
{
    return std::min(TrafficPair, static_cast<int>(m_sources.size()));
}

std::unique_ptr<ConsolePorts> openConsolePorts(const std::string& name, int pairs)
{
    return std::make_unique<CoreMIDIPorts>(name, pairs);
}

std::string_view portsDescription()
{
    return "The virtual sources are called \"NAME midi_1\", \"NAME midi_2\", ... and the virtual\n"
           "destinations \"NAME midi_1_in\", \"NAME midi_2_in\", ...";
}

std::string_view serverName()
{
    return "MIDI server";
}

} // namespace kestrel::console
