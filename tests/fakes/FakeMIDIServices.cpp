#include "tests/fakes/FakeMIDIServices.h"

namespace kestrel::test {

namespace {
constexpr MIDIStatus Failure = -10830;

class VectorPacketList final : public MIDIPacketList {
public:
    explicit VectorPacketList(const std::vector<Bytes>& packets)
        : m_packets(packets)
    {
    }
    std::optional<MIDIPacket> next() override
    {
        if (m_index == m_packets.size())
            return {};
        return MIDIPacket { 0, m_packets[m_index++] };
    }

private:
    const std::vector<Bytes>& m_packets;
    std::size_t m_index = 0;
};
} // namespace

MIDIStatus FakeMIDIServices::createClient(
    std::string_view name, NotifyProc notify, void* refCon, MIDIClient& client)
{
    calls.push_back("create client " + std::string(name));
    if (fails("create client"))
        return Failure;
    m_notify = notify;
    m_notifyRefCon = refCon;
    client = ++m_lastReference;
    return MIDINoError;
}

void FakeMIDIServices::disposeClient(MIDIClient client)
{
    calls.push_back("dispose client " + std::to_string(client));
}

MIDIStatus FakeMIDIServices::createInputPort(
    MIDIClient, std::string_view name, ReadProc read, void* refCon, MIDIPort& port)
{
    calls.push_back("create input port " + std::string(name));
    if (fails("create input port"))
        return Failure;
    m_read = read;
    m_readRefCon = refCon;
    port = ++m_lastReference;
    return MIDINoError;
}

MIDIStatus FakeMIDIServices::createOutputPort(MIDIClient, std::string_view name, MIDIPort& port)
{
    calls.push_back("create output port " + std::string(name));
    if (fails("create output port"))
        return Failure;
    port = ++m_lastReference;
    return MIDINoError;
}

void FakeMIDIServices::disposePort(MIDIPort port)
{
    calls.push_back("dispose port " + std::to_string(port));
}

std::vector<MIDIDevice> FakeMIDIServices::devices()
{
    return deviceList;
}

MIDIStatus FakeMIDIServices::connectSource(MIDIPort, MIDIEndpoint source, void* srcConnRefCon)
{
    const std::string call = "connect " + std::to_string(source);
    calls.push_back(call);
    if (fails(call))
        return Failure;
    m_connectionRefCon = srcConnRefCon;
    return MIDINoError;
}

MIDIStatus FakeMIDIServices::send(
    MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
{
    sent.push_back({ outputPort, destination, packet.timeStamp,
        Bytes(packet.data.begin(), packet.data.end()) });
    return fails("send") ? Failure : MIDINoError;
}

void FakeMIDIServices::deliver(const std::vector<Bytes>& packets) const
{
    VectorPacketList list(packets);
    m_read(list, m_readRefCon, m_connectionRefCon);
}

void FakeMIDIServices::notify(std::int32_t messageID, std::int32_t childType) const
{
    m_notify({ messageID, childType }, m_notifyRefCon);
}

MIDIDevice device(int number, std::string model, int entityCount)
{
    MIDIDevice result;
    result.model = std::move(model);
    for (int entity = 0; entity < entityCount; ++entity) {
        const auto base = static_cast<MIDIEndpoint>(100 * number + 10 * entity);
        result.entities.push_back({ { { base + 1, -(100 * number + entity) } }, { base + 2 } });
    }
    return result;
}

} // namespace kestrel::test
