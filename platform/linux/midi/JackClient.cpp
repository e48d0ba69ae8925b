#include "platform/linux/midi/JackClient.h"

#include <jack/jack.h>
#include <jack/midiport.h>
#include <pthread.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

namespace kestrel {

namespace {
// How long to wait for a new connection. JACK makes it effective in a later cycle, as long as
// cycles run.
constexpr auto ConnectionTimeout = std::chrono::seconds(1);

PortDirection directionOf(const jack_port_t* port)
{
    return (jack_port_flags(port) & JackPortIsOutput) != 0 ? PortDirection::Output
                                                           : PortDirection::Input;
}

// Gives `name` to the threads that JACK starts while this object exists. A new thread inherits the
// name of the thread that starts it, and JACK offers no other way to tell its threads apart.
class NewThreadsAreNamed {
public:
    explicit NewThreadsAreNamed(const char* name)
    {
        pthread_getname_np(pthread_self(), m_before.data(), m_before.size());
        pthread_setname_np(pthread_self(), name);
    }
    ~NewThreadsAreNamed() { pthread_setname_np(pthread_self(), m_before.data()); }
    NewThreadsAreNamed(const NewThreadsAreNamed&) = delete;
    NewThreadsAreNamed& operator=(const NewThreadsAreNamed&) = delete;

private:
    std::array<char, 16> m_before {}; // the size of the longest name that Linux keeps
};

jack_client_t* openClient(const std::string& name)
{
    const NewThreadsAreNamed named("jack-notify");
    return jack_client_open(name.c_str(), JackNoStartServer, nullptr);
}

bool activate(jack_client_t* client)
{
    const NewThreadsAreNamed named("jack-process");
    return jack_activate(client) == 0;
}
} // namespace

template <typename Lane> bool JackClient::Lanes<Lane>::add(const std::shared_ptr<Lane>& lane)
{
    const std::size_t index = count.load(std::memory_order_relaxed);
    if (index == lanes.size())
        return false;
    lanes[index] = lane;
    count.store(index + 1, std::memory_order_release);
    return true;
}

JackClient::JackClient(std::shared_ptr<Wakeup> wakeup)
    : m_wakeup(std::move(wakeup))
{
}

bool JackClient::open(const std::string& name)
{
    jack_client_t* const handle = openClient(name);
    if (!handle)
        return false;
    m_foreignPorts.bind(handle, name);
    m_handle.store(handle);
    m_alive.store(true);
    setCallbacks();
    if (!activate(m_handle)) {
        close();
        return false;
    }
    m_foreignPorts.learn();
    return true;
}

void JackClient::close()
{
    m_alive.store(false);
    if (!m_handle)
        return;
    jack_client_close(m_handle); // the process callback needs the handle until this returns
    m_handle.store(nullptr);
}

void JackClient::abandon()
{
    m_alive.store(false);
    m_graph.happened(); // ends a wait for a connection
}

void JackClient::setCallbacks()
{
    jack_set_process_callback(
        m_handle,
        [](jack_nframes_t frames, void* self) {
            static_cast<JackClient*>(self)->process(frames);
            return 0;
        },
        this);
    jack_on_shutdown(
        m_handle,
        [](void* self) {
            static_cast<JackClient*>(self)->abandon();
            static_cast<JackClient*>(self)->announce(ServerGone);
        },
        this);
    setNotificationCallbacks();
}

void JackClient::setNotificationCallbacks()
{
    jack_set_port_registration_callback(
        m_handle,
        [](jack_port_id_t identifier, int registered, void* self) {
            auto* client = static_cast<JackClient*>(self);
            if (registered != 0)
                client->portRegistered(identifier);
            else
                client->portUnregistered(identifier);
        },
        this);
    jack_set_port_rename_callback(
        m_handle,
        [](jack_port_id_t identifier, const char*, const char*, void* self) {
            static_cast<JackClient*>(self)->portUnregistered(identifier);
            static_cast<JackClient*>(self)->portRegistered(identifier);
        },
        this);
    jack_set_port_connect_callback(
        m_handle,
        [](jack_port_id_t, jack_port_id_t, int connected, void* self) {
            if (connected == 0)
                static_cast<JackClient*>(self)->connectionRemoved();
        },
        this);
    jack_set_graph_order_callback(
        m_handle,
        [](void* self) {
            static_cast<JackClient*>(self)->graphChanged();
            return 0;
        },
        this);
}

// JACK goes on without a client that is late, and what the sources sent in the missed cycles is
// gone. The first frame of a cycle shows this, because JACK counts the frames of the cycles that it
// ran. Its xrun callback is no sign: it also tells of cycles that came too late for everybody and
// lost nothing.
void JackClient::process(std::uint32_t frames)
{
    jack_client_t* const handle = m_handle;
    const jack_nframes_t cycle = jack_last_frame_time(handle);
    bool arrived = false;
    bool lost = cycle != std::exchange(m_lastCycle, cycle).value_or(cycle - frames) + frames;
    const std::size_t sources = m_sources.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < sources; ++i) {
        const SourceLane::Received received = m_sources.lanes[i]->receive(handle, frames);
        arrived |= received.packets;
        lost |= received.lostEvents;
    }
    lost |= jack_last_frame_time(handle) != cycle; // the sources write the next cycle already
    if (lost && sources > 0 && isAlive())
        announce(PacketsLost);
    else if (arrived)
        m_wakeup->raise();
    const std::size_t destinations = m_destinations.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < destinations; ++i)
        m_destinations.lanes[i]->transmit(frames);
}

std::vector<PortListing> JackClient::listForeignPorts() const
{
    return isAlive() ? m_foreignPorts.list() : std::vector<PortListing> {};
}

void JackClient::portRegistered(std::uint32_t identifier)
{
    m_foreignPorts.registered(identifier);
    announcePorts();
}

void JackClient::portUnregistered(std::uint32_t identifier)
{
    const auto gone = m_foreignPorts.unregistered(identifier);
    if (!gone)
        return;
    const std::size_t destinations = m_destinations.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < destinations; ++i) {
        if (m_destinations.lanes[i]->destinationName() == gone->name)
            m_destinations.lanes[i]->disconnected();
    }
    if (gone->direction == PortDirection::Output && m_foreignPorts.isWanted(*gone))
        announce(PacketsLost);
    announcePorts();
}

void JackClient::connectionRemoved()
{
    m_awaitsGraph = true;
    suspectCut();
}

void JackClient::graphChanged()
{
    m_graph.happened();
    if (m_awaitsGraph.exchange(false))
        suspectCut();
}

// JACK tells of the cut before it takes effect, and numbers of ports may belong to other ports by
// now. So the connections themselves are looked at, on the control thread.
void JackClient::suspectCut()
{
    if (!m_isCutSuspected.exchange(true))
        announce(ConnectionsInDoubt);
}

void JackClient::findCuts()
{
    m_isCutSuspected = false;
    if (!isAlive())
        return;
    const auto isCut = [](const jack_port_t* port, const std::string& otherName) {
        return jack_port_connected_to(port, otherName.c_str()) == 0;
    };
    const std::size_t destinations = m_destinations.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < destinations; ++i) {
        DestinationLane& lane = *m_destinations.lanes[i];
        if (lane.isConnected() && isCut(lane.port(), lane.destinationName()))
            lane.disconnected();
    }
    const std::size_t sources = m_sources.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < sources; ++i) {
        const SourceLane& lane = *m_sources.lanes[i];
        if (lane.isClosed() || !isCut(lane.port(), lane.sourceName()))
            continue;
        announce(PacketsLost);
        m_foreignPorts.cut({ lane.sourceName(), PortDirection::Output });
    }
    announcePorts();
}

void JackClient::announcePorts()
{
    if (m_foreignPorts.hasNews())
        announce(PortsChanged);
}

void JackClient::announce(unsigned news)
{
    m_news.fetch_or(news);
    m_wakeup->raise();
}

jack_port_t* JackClient::registerPort(const std::string& name, PortDirection direction)
{
    const int copy = ++m_registered[name];
    const std::string unique = copy == 1 ? name : name + " " + std::to_string(copy);
    return jack_port_register(m_handle, unique.c_str(), JACK_DEFAULT_MIDI_TYPE,
        direction == PortDirection::Output ? JackPortIsOutput : JackPortIsInput, 0);
}

bool JackClient::reservePort(const std::string& name, PortDirection direction)
{
    jack_port_t* const port = isAlive() ? registerPort(name, direction) : nullptr;
    if (port)
        m_reserved.emplace(name, port);
    return port != nullptr;
}

jack_port_t* JackClient::takePort(const std::string& name, PortDirection direction)
{
    for (auto [at, end] = m_reserved.equal_range(name); at != end; ++at) {
        jack_port_t* const port = at->second;
        if (directionOf(port) != direction)
            continue;
        m_reserved.erase(at);
        return port;
    }
    return registerPort(name, direction);
}

// Returns true once packets pass. JACK drops packets that are written before the connection is
// effective.
bool JackClient::connectEffectively(jack_port_t* port, const std::string& otherName)
{
    const char* const ours = jack_port_name(port);
    const bool isOutput = directionOf(port) == PortDirection::Output;
    const char* const output = isOutput ? ours : otherName.c_str();
    const char* const input = isOutput ? otherName.c_str() : ours;
    const int result = jack_connect(m_handle, output, input);
    if (result != 0 && result != EEXIST)
        return false;
    bool isConnected = false;
    const bool isDecided = m_graph.waitUntil(
        [&] {
            isConnected = isAlive() && jack_port_connected_to(port, otherName.c_str()) > 0;
            return isConnected || !isAlive();
        },
        ConnectionTimeout);
    return isDecided && isConnected;
}

bool JackClient::connectSource(const std::shared_ptr<SourceLane>& lane, const std::string& portName)
{
    jack_port_t* const port = isAlive() ? takePort(portName, PortDirection::Input) : nullptr;
    if (!port)
        return false;
    lane->bind(port);
    m_foreignPorts.want({ lane->sourceName(), PortDirection::Output });
    if (connectEffectively(port, lane->sourceName()) && m_sources.add(lane))
        return true;
    disconnect(port);
    m_reserved.emplace(portName, port);
    return false;
}

bool JackClient::giveOwnPort(
    const std::shared_ptr<DestinationLane>& lane, const std::string& portName)
{
    jack_port_t* const port = takePort(portName, PortDirection::Output);
    if (!port)
        return false;
    lane->bind(port);
    if (m_destinations.add(lane))
        return true;
    lane->bind(nullptr);
    m_reserved.emplace(portName, port);
    return false;
}

void JackClient::connectDestination(
    const std::shared_ptr<DestinationLane>& lane, const std::string& portName)
{
    const bool hasPort = isAlive() && (lane->port() || giveOwnPort(lane, portName));
    if (hasPort && connectEffectively(lane->port(), lane->destinationName()))
        lane->connected();
    else
        lane->disconnected();
}

void JackClient::disconnect(jack_port_t* port)
{
    if (isAlive())
        jack_port_disconnect(m_handle, port);
}

} // namespace kestrel
