#include "platform/linux/midi/JackMIDIServices.h"

#include "platform/linux/midi/JackClient.h"

#include <jack/jack.h>

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
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
    : m_wakeup(std::make_shared<Wakeup>())
    , m_control(patience, [wakeup = m_wakeup] { wakeup->raise(); })
    , m_alarmWatch(mainLoop.watch(m_alarm.descriptor(),
          [this] {
              m_alarm.lower();
              deliver(JackClient::PortsChanged);
          }))
    , m_watch(mainLoop.watch(m_wakeup->descriptor(), [this] { deliver(0); }))
{
    // JACK would write to standard error each time that it finds no server.
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
}

JackMIDIServices::~JackMIDIServices()
{
    m_watch.reset();
    m_alarmWatch.reset();
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
    const auto opened = std::make_shared<JackClient>(m_wakeup);
    const bool isOpen = ask([opened, name = std::string(name)] { return opened->open(name); },
        [opened] { opened->close(); });
    m_answerMissed = false;
    if (!isOpen)
        return {};
    m_client = opened;
    m_notify = notify;
    m_notifyRefCon = refCon;
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
    m_alarm.lower();
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
    std::vector<MIDIDevice> devices;
    for (const PortOwner& owner : isListed ? pairPorts(*ports) : std::vector<PortOwner> {}) {
        MIDIDevice& device = devices.emplace_back(MIDIDevice { owner.client, {} });
        for (const PortPair& pair : owner.pairs) {
            MIDIEntity& entity = device.entities.emplace_back();
            if (pair.output)
                entity.sources.push_back(
                    { m_endpoints.endpointNamed(*pair.output), stableIdentifier(*pair.output) });
            if (pair.input)
                entity.destinations.push_back(m_endpoints.endpointNamed(*pair.input));
        }
    }
    return devices;
}

bool JackMIDIServices::connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
{
    const auto port = findPort(m_inputs, inputPort);
    const std::string* const sourceName = m_endpoints.nameOf(source);
    if (!port || !sourceName)
        return false;
    const auto lane = std::make_shared<SourceLane>(*sourceName, srcConnRefCon);
    const bool isConnected = ask([jack = m_client, lane, portName = port->name] {
        return jack->connectSource(lane, portName);
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
    const bool isLoss = takeLosses() || (news & JackClient::PacketsLost) != 0;
    deliverPackets();
    if (isLoss && client && client == m_client && m_packetsLost)
        m_packetsLost();
    if (client && client == m_client)
        deliverNews(client, news);
}

void JackMIDIServices::deliverPackets()
{
    const auto inputs = m_inputs; // a copy, because a read callback may dispose of any port
    for (const auto& port : inputs) {
        const auto lanes = port->lanes;
        for (const auto& lane : lanes) {
            if (port->read)
                lane->deliver(port->read, port->refCon);
        }
    }
}

bool JackMIDIServices::takeLosses()
{
    bool isLoss = false;
    for (const auto& port : m_inputs) {
        for (const auto& lane : port->lanes)
            isLoss |= lane->takeLoss();
    }
    return isLoss;
}

// Returns the changes that may be told now, and sets the alarm for the rest.
unsigned JackMIDIServices::takeChanges(JackClient& client)
{
    const auto now = std::chrono::steady_clock::now();
    const unsigned changes = now >= m_pace.next() ? client.foreignPorts().takeChanges(now) : 0;
    if ((changes & (PortChanges::SourceAdded | PortChanges::SourceRemoved)) != 0)
        m_pace.happened(now);
    const auto due = client.foreignPorts().tellDue();
    m_alarm.set(due == Alarm::TimePoint::max() ? due : std::max(due, m_pace.next()));
    return changes;
}

void JackMIDIServices::deliverNews(const std::shared_ptr<JackClient>& client, unsigned news)
{
    if ((news & JackClient::ConnectionsInDoubt) != 0)
        m_control.post([client] { client->findCuts(); });
    unsigned changes = (news & JackClient::PortsChanged) != 0 ? takeChanges(*client) : 0;
    if ((news & JackClient::ServerGone) != 0) {
        m_control.post([client] { client->close(); });
        // One is enough: the server's end removes everything.
        changes = PortChanges::SourceRemoved;
    }
    if (m_answerMissed && !m_control.isBehind()) {
        m_answerMissed = false;
        changes |= PortChanges::SourceAdded; // the server answers again, so the receiver can retry
    }
    const auto tell = [&](unsigned kind, std::int32_t message, std::int32_t type) {
        if ((changes & kind) != 0 && m_client == client && m_notify)
            m_notify(MIDINotification { message, type }, m_notifyRefCon);
    };
    using Notification = MIDINotification;
    tell(PortChanges::SourceRemoved, Notification::ObjectRemoved, Notification::Source);
    tell(PortChanges::DestinationRemoved, Notification::ObjectRemoved, Notification::Destination);
    tell(PortChanges::SourceAdded, Notification::ObjectAdded, Notification::Source);
    tell(PortChanges::DestinationAdded, Notification::ObjectAdded, Notification::Destination);
}

} // namespace kestrel
