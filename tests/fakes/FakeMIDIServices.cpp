#include "tests/fakes/FakeMIDIServices.h"

#include <algorithm>
#include <functional>

namespace kestrel::test {

namespace {
class VectorPacketList final : public MIDIPacketList {
public:
    VectorPacketList(const std::vector<Bytes>& packets, std::function<bool()> isOpen)
        : m_packets(packets)
        , m_isOpen(std::move(isOpen))
    {
    }
    std::optional<MIDIPacket> next() override
    {
        if (m_index == m_packets.size() || !m_isOpen())
            return {};
        return MIDIPacket { 0, m_packets[m_index++] };
    }

private:
    const std::vector<Bytes>& m_packets;
    std::function<bool()> m_isOpen; // the port that the packets are for
    std::size_t m_index = 0;
};
} // namespace

std::optional<MIDIClient> FakeMIDIServices::createClient(
    std::string_view name, NotifyProc notify, void* refCon)
{
    calls.push_back("create client " + std::string(name));
    if (fails("create client") || m_client != 0)
        return {};
    m_notify = notify;
    m_notifyRefCon = refCon;
    m_client = ++m_lastReference;
    return m_client;
}

void FakeMIDIServices::disposeClient(MIDIClient client)
{
    calls.push_back("dispose client " + std::to_string(client));
    if (!isOpen(client))
        return;
    m_client = 0;
    m_inputPorts.clear();
    m_outputPorts.clear();
}

std::optional<MIDIPort> FakeMIDIServices::createInputPort(
    MIDIClient client, std::string_view name, ReadProc read, void* refCon)
{
    calls.push_back("create input port " + std::string(name));
    if (fails("create input port") || !isOpen(client))
        return {};
    m_inputPorts.emplace(++m_lastReference, InputPort { read, refCon, {} });
    return m_lastReference;
}

std::optional<MIDIPort> FakeMIDIServices::createOutputPort(MIDIClient client, std::string_view name)
{
    calls.push_back("create output port " + std::string(name));
    if (fails("create output port") || !isOpen(client))
        return {};
    m_outputPorts.insert(++m_lastReference);
    return m_lastReference;
}

void FakeMIDIServices::disposePort(MIDIPort port)
{
    calls.push_back("dispose port " + std::to_string(port));
    m_inputPorts.erase(port);
    m_outputPorts.erase(port);
}

std::vector<MIDIDevice> FakeMIDIServices::devices()
{
    return m_client != 0 ? deviceList : std::vector<MIDIDevice> {};
}

bool FakeMIDIServices::hasSource(MIDIEndpoint source) const
{
    const auto isIt = [source](const MIDISource& each) { return each.endpoint == source; };
    for (const MIDIDevice& device : deviceList) {
        for (const MIDIEntity& entity : device.entities) {
            if (std::any_of(entity.sources.begin(), entity.sources.end(), isIt))
                return true;
        }
    }
    return false;
}

bool FakeMIDIServices::connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
{
    const std::string call = "connect " + std::to_string(source);
    calls.push_back(call);
    const auto port = m_inputPorts.find(inputPort);
    if (fails(call) || port == m_inputPorts.end() || !hasSource(source))
        return false;
    port->second.connections.push_back(srcConnRefCon);
    return true;
}

bool FakeMIDIServices::answersFor(MIDIEndpoint source, std::int32_t)
{
    return !fails("answer") && hasSource(source);
}

bool FakeMIDIServices::send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
{
    sent.push_back({ outputPort, destination, packet.timeStamp,
        Bytes(packet.data.begin(), packet.data.end()) });
    return !fails("send") && m_outputPorts.contains(outputPort);
}

void FakeMIDIServices::deliver(const std::vector<Bytes>& packets) const
{
    const auto ports = m_inputPorts; // a callback may dispose of any of them
    for (const auto& [reference, port] : ports) {
        for (void* const connection : port.connections) {
            const auto isOpen
                = [this, reference = reference] { return m_inputPorts.contains(reference); };
            VectorPacketList list(packets, isOpen);
            if (isOpen())
                port.read(list, port.refCon, connection);
        }
    }
}

void FakeMIDIServices::notify(std::int32_t messageID, std::int32_t childType) const
{
    if (m_client != 0)
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
