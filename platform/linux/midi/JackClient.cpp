#include "platform/linux/midi/JackClient.h"

#include <jack/jack.h>
#include <jack/midiport.h>
#include <pthread.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
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
    m_name = jack_get_client_name(handle);
    m_handle.store(handle);
    m_alive.store(true);
    setCallbacks();
    if (!activate(m_handle)) {
        close();
        return false;
    }
    learnForeignPorts();
    return true;
}

void JackClient::close()
{
    m_alive.store(false);
    if (jack_client_t* const handle = m_handle.exchange(nullptr))
        jack_client_close(handle);
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
            static_cast<JackClient*>(self)->portRenamed(identifier);
        },
        this);
    jack_set_graph_order_callback(
        m_handle,
        [](void* self) {
            static_cast<JackClient*>(self)->m_graph.happened();
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
}

void JackClient::process(std::uint32_t frames)
{
    bool arrived = false;
    const std::size_t sources = m_sources.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < sources; ++i)
        arrived |= m_sources.lanes[i]->receive(m_handle, frames);
    if (arrived)
        m_wakeup->raise();
    const std::size_t destinations = m_destinations.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < destinations; ++i)
        m_destinations.lanes[i]->transmit(frames);
}

bool JackClient::isForeignMIDI(const jack_port_t* port) const
{
    const char* const name = port ? jack_port_name(port) : nullptr;
    const char* const type = name ? jack_port_type(port) : nullptr;
    return type && std::strcmp(type, JACK_DEFAULT_MIDI_TYPE) == 0 && clientOf(name) != m_name;
}

std::vector<PortListing> JackClient::foreignPorts()
{
    std::vector<PortListing> ports;
    const char** const names
        = isAlive() ? jack_get_ports(m_handle, nullptr, JACK_DEFAULT_MIDI_TYPE, 0) : nullptr;
    for (const char** name = names; name && *name; ++name) {
        const jack_port_t* const port = jack_port_by_name(m_handle, *name);
        if (port && clientOf(*name) != m_name)
            ports.push_back({ *name, directionOf(port) });
    }
    if (names)
        jack_free(names);
    return ports;
}

// Records the names and directions of the ports. When a port is unregistered, JACK passes only the
// port, so its name and direction must be known before.
void JackClient::learnForeignPorts()
{
    const std::lock_guard lock(m_foreignMutex);
    for (const PortListing& listing : foreignPorts()) {
        if (const jack_port_t* const port = jack_port_by_name(m_handle, listing.name.c_str()))
            m_foreign[port] = { listing.name, listing.direction };
    }
}

// JACK also calls this for a port that has been listed for a while, when the port's client becomes
// active: the port can be connected only from then on.
void JackClient::portRegistered(std::uint32_t identifier)
{
    const jack_port_t* const port = jack_port_by_id(m_handle, identifier);
    if (!isForeignMIDI(port))
        return;
    const PortDirection direction = directionOf(port);
    {
        const std::lock_guard lock(m_foreignMutex);
        m_foreign[port] = { jack_port_name(port), direction };
    }
    announce(direction == PortDirection::Output ? SourceAdded : DestinationAdded);
}

void JackClient::portUnregistered(std::uint32_t identifier)
{
    const jack_port_t* const port = jack_port_by_id(m_handle, identifier);
    std::unique_lock lock(m_foreignMutex);
    const auto gone = m_foreign.extract(port);
    lock.unlock();
    if (gone.empty())
        return;
    const ForeignPort& foreign = gone.mapped();
    const std::size_t destinations = m_destinations.count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < destinations; ++i) {
        if (m_destinations.lanes[i]->destinationName() == foreign.name)
            m_destinations.lanes[i]->disconnected();
    }
    announce(foreign.direction == PortDirection::Output ? SourceRemoved : DestinationRemoved);
}

void JackClient::portRenamed(std::uint32_t identifier)
{
    portUnregistered(identifier);
    portRegistered(identifier);
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

bool JackClient::connectSource(const std::shared_ptr<SourceLane>& lane,
    const std::string& sourceName, const std::string& portName)
{
    jack_port_t* const port = isAlive() ? takePort(portName, PortDirection::Input) : nullptr;
    if (!port)
        return false;
    lane->bind(port);
    if (connectEffectively(port, sourceName) && m_sources.add(lane))
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
