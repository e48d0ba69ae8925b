#include "platform/linux/midi/JackMIDIServices.h"

#include "platform/linux/midi/DeviceList.h"
#include "platform/linux/midi/JackClient.h"

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
// An attempt to connect gives up before its caller does, so that the caller learns how it ended and
// no later operation waits for it.
constexpr std::chrono::milliseconds connectionTimeout(std::chrono::milliseconds patience)
{
    return patience * 4 / 5;
}
static_assert(connectionTimeout(JackMIDIServices::Patience) > std::chrono::milliseconds(350));

template <typename Port>
std::shared_ptr<Port> findPort(const std::vector<std::shared_ptr<Port>>& ports, MIDIPort reference)
{
    const auto found = std::find_if(ports.begin(), ports.end(),
        [reference](const auto& port) { return port->reference == reference; });
    return found == ports.end() ? nullptr : *found;
}
} // namespace

struct JackMIDIServices::InputPort {
    const MIDIPort reference;
    const std::string name;
    ReadProc read; // null once the port is disposed of
    void* const refCon;
    std::vector<std::shared_ptr<SourceLane>> lanes;

    void close()
    {
        read = nullptr;
        for (const auto& lane : lanes)
            lane->close();
    }
};

struct JackMIDIServices::OutputPort {
    const MIDIPort reference;
    const std::string name;
    std::vector<std::shared_ptr<DestinationLane>> lanes;
};

JackMIDIServices::JackMIDIServices(MainLoop& mainLoop, std::chrono::milliseconds patience)
    : m_patience(patience)
    , m_wakeup(std::make_shared<Wakeup>())
    , m_control(patience, [wakeup = m_wakeup] { wakeup->raise(); })
    , m_changes(mainLoop, [this] { deliver(JackClient::PortsChanged); })
    , m_watch(mainLoop.watch(m_wakeup->descriptor(), [this] { deliver(0); }))
{
}

JackMIDIServices::~JackMIDIServices()
{
    disposeClient(m_clientRef);
}

// Asks the server on the control thread. False when the answer is no or does not come in time.
bool JackMIDIServices::ask(std::function<bool()> question, ControlThread::Job undo)
{
    const auto answer = std::make_shared<bool>(false);
    const bool answered = m_control.call(
        [answer, question = std::move(question)] { *answer = question(); }, std::move(undo));
    m_answerMissed |= !answered;
    return answered && *answer;
}

std::optional<MIDIClient> JackMIDIServices::createClient(
    std::string_view name, NotifyProc notify, void* refCon)
{
    if (m_client)
        return {};
    const auto opened = std::make_shared<JackClient>(m_wakeup, connectionTimeout(m_patience));
    for (const std::string& familiar : m_familiarClients)
        opened->foreignPorts().know(familiar);
    const bool isOpen = ask([opened, name = std::string(name)] { return opened->open(name); },
        [opened] { opened->close(); });
    m_answerMissed = false;
    if (!isOpen)
        return {};
    m_client = opened;
    m_changes.begin(notify, refCon);
    m_clientRef = ++m_lastRef;
    return m_clientRef;
}

void JackMIDIServices::disposeClient(MIDIClient client)
{
    if (!m_client || client != m_clientRef)
        return;
    for (const auto& port : m_inputs)
        port->close();
    m_inputs.clear();
    m_outputs.clear();
    m_clientRef = 0;
    m_answerMissed = false;
    m_changes.end();
    const auto closing = std::exchange(m_client, nullptr);
    closing->abandon();
    m_control.settle([closing] { closing->close(); });
}

bool JackMIDIServices::reservePort(
    MIDIClient client, const std::string& name, PortDirection direction)
{
    return m_client && client == m_clientRef
        && ask([jack = m_client, name, direction] { return jack->reservePort(name, direction); });
}

std::optional<MIDIPort> JackMIDIServices::createInputPort(
    MIDIClient client, std::string_view name, ReadProc read, void* refCon)
{
    if (!reservePort(client, std::string(name), PortDirection::Input))
        return {};
    const MIDIPort port = ++m_lastRef;
    m_inputs.push_back(
        std::make_shared<InputPort>(InputPort { port, std::string(name), read, refCon, {} }));
    return port;
}

std::optional<MIDIPort> JackMIDIServices::createOutputPort(MIDIClient client, std::string_view name)
{
    if (!reservePort(client, std::string(name), PortDirection::Output))
        return {};
    const MIDIPort port = ++m_lastRef;
    m_outputs.push_back(std::make_shared<OutputPort>(OutputPort { port, std::string(name), {} }));
    return port;
}

void JackMIDIServices::disposePort(MIDIPort port)
{
    const auto disconnect = [this](const auto& lane) {
        m_control.post([jack = m_client, lane] { jack->disconnect(lane->port()); });
    };
    if (const auto input = findPort(m_inputs, port)) {
        input->close();
        std::for_each(input->lanes.begin(), input->lanes.end(), disconnect);
        std::erase(m_inputs, input);
    } else if (const auto output = findPort(m_outputs, port)) {
        std::for_each(output->lanes.begin(), output->lanes.end(), disconnect);
        std::erase(m_outputs, output);
    }
}

std::vector<MIDIDevice> JackMIDIServices::devices()
{
    if (!m_client)
        return {};
    const auto ports = std::make_shared<std::vector<PortListing>>();
    const bool isListed = ask([jack = m_client, ports] {
        *ports = jack->listForeignPorts();
        return true;
    });
    return isListed ? listDevices(*ports, m_endpoints) : std::vector<MIDIDevice> {};
}

bool JackMIDIServices::connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
{
    const auto port = findPort(m_inputs, inputPort);
    const std::string* const sourceName = m_endpoints.nameOf(source);
    if (!port || !sourceName)
        return false;
    m_familiarClients.emplace(clientOf(*sourceName));
    const auto lane = std::make_shared<SourceLane>(*sourceName, srcConnRefCon);
    const bool isConnected
        = ask([jack = m_client, lane,
                  portName = port->name] { return jack->connectSource(lane, portName); },
            [jack = m_client, lane] {
                lane->close();
                jack->disconnect(lane->port());
            });
    if (isConnected)
        port->lanes.push_back(lane);
    return isConnected;
}

bool JackMIDIServices::send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
{
    const auto port = findPort(m_outputs, outputPort);
    const std::string* const name = m_endpoints.nameOf(destination);
    if (!port || !name || !m_client->isAlive())
        return false;
    auto found = std::find_if(port->lanes.begin(), port->lanes.end(),
        [destination](const auto& lane) { return lane->destination() == destination; });
    if (found == port->lanes.end())
        found = port->lanes.insert(found, std::make_shared<DestinationLane>(destination, *name));
    const std::shared_ptr<DestinationLane>& lane = *found;
    if (lane->wantsConnecting()) {
        m_control.post([jack = m_client, lane, portName = port->name] {
            jack->connectDestination(lane, portName);
        });
    }
    return lane->push(packet.data);
}

void JackMIDIServices::deliver(unsigned moreNews)
{
    m_wakeup->lower();
    const auto client = m_client;
    // The news is taken before the packets, so that no packet that came before the news is
    // delivered after it.
    const unsigned news = client ? client->takeNews() | moreNews : 0;
    deliverPackets();
    if (client && client == m_client)
        deliverNews(client, news);
}

void JackMIDIServices::deliverPackets()
{
    const auto lost = [this] {
        if (m_packetsLost)
            m_packetsLost();
    };
    const auto inputs = m_inputs; // a copy, because a read callback may dispose of any port
    for (const auto& port : inputs) {
        const auto lanes = port->lanes;
        for (const auto& lane : lanes) {
            if (port->read)
                lane->deliver(port->read, port->refCon, lost);
        }
    }
}

void JackMIDIServices::deliverNews(const std::shared_ptr<JackClient>& client, unsigned news)
{
    if ((news & JackClient::ServerGone) != 0) {
        m_control.post([client] { client->close(); });
        // One is enough: the server's end removes everything.
        m_changes.tell(PortChanges::SourceRemoved);
        return;
    }
    if (m_answerMissed && !m_control.isBehind()) {
        m_answerMissed = false;
        client->foreignPorts().tryAgain(); // the server answers again
        news |= JackClient::PortsChanged;
    }
    if ((news & JackClient::PortsChanged) != 0)
        m_changes.tellDue(client->foreignPorts());
}

} // namespace kestrel
