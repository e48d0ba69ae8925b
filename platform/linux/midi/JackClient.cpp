#include "platform/linux/midi/JackClient.h"

#include "platform/linux/midi/NamedThreads.h"

#include <jack/jack.h>

#include <cerrno>
#include <utility>

namespace kestrel {

JackClient::JackClient(std::shared_ptr<Wakeup> wakeup, std::chrono::milliseconds connectionTimeout)
    : m_wakeup(std::move(wakeup))
    , m_connectionTimeout(connectionTimeout)
{
}

bool JackClient::open(const std::string& name)
{
    // JACK would write to standard error each time that it finds no server.
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    jack_client_t* const handle = openWithNamedThreads(name);
    if (!handle)
        return false;
    m_foreignPorts.bind(handle, name);
    m_ownPorts.bind(handle);
    m_handle.store(handle);
    m_alive.store(true);
    setCallbacks(handle, *this);
    if (!activateWithNamedThreads(m_handle)) {
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

void JackClient::process(std::uint32_t frames)
{
    if (m_lanes.process(m_handle, frames))
        m_wakeup->raise();
}

void JackClient::graphChanged()
{
    m_graph.happened();
}

void JackClient::shutDown()
{
    abandon();
    announce(ServerGone);
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
    if (m_lanes.disconnected(*gone))
        m_wakeup->raise(); // for the loss
    announcePorts();
}

void JackClient::connectionRemoved(jack_port_id_t one, jack_port_id_t other)
{
    noteCut(one, other);
    noteCut(other, one);
}

// The notification itself says that the connection is cut: the look of the graph does not, because
// the cut takes effect in a later cycle. Our own port keeps its number as long as the client is
// open. The number of a foreign port that is gone may belong to another port by now, but then its
// removal is told as well.
void JackClient::noteCut(jack_port_id_t foreign, jack_port_id_t ours)
{
    const auto port = m_foreignPorts.known(foreign);
    if (!port || !m_lanes.disconnected(*port, jack_port_by_id(m_handle, ours)))
        return;
    m_wakeup->raise(); // for the loss
    m_foreignPorts.cut(*port);
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

bool JackClient::reservePort(const std::string& name, PortDirection direction)
{
    return isAlive() && m_ownPorts.reserve(name, direction);
}

// Returns once packets pass. JACK drops packets that are written before the connection is
// effective, which it becomes in a later cycle, as long as cycles run.
JackClient::Attempt JackClient::connectEffectively(jack_port_t* port, const std::string& otherName)
{
    const char* const ours = jack_port_name(port);
    const bool isOutput = OwnPorts::directionOf(port) == PortDirection::Output;
    const char* const output = isOutput ? ours : otherName.c_str();
    const char* const input = isOutput ? otherName.c_str() : ours;
    const int result = jack_connect(m_handle, output, input);
    if (result != 0 && result != EEXIST)
        return Attempt::Refused;
    bool isConnected = false;
    const bool isDecided = m_graph.waitUntil(
        [&] {
            isConnected = isAlive() && jack_port_connected_to(port, otherName.c_str()) > 0;
            return isConnected || !isAlive();
        },
        m_connectionTimeout);
    if (!isDecided)
        return Attempt::TooLate;
    return isConnected ? Attempt::Connected : Attempt::Refused;
}

// The lane is in use before the connection is made, so that no cut goes unnoticed.
bool JackClient::connectSource(const std::shared_ptr<SourceLane>& lane, const std::string& portName)
{
    jack_port_t* const port = isAlive() ? m_ownPorts.take(portName, PortDirection::Input) : nullptr;
    if (!port)
        return false;
    lane->bind(port);
    m_foreignPorts.want({ lane->sourceName(), PortDirection::Output });
    const Attempt attempt
        = m_lanes.add(lane) ? connectEffectively(port, lane->sourceName()) : Attempt::Refused;
    if (attempt == Attempt::Connected)
        return true;
    lane->close();
    disconnect(port);
    m_ownPorts.giveBack(portName, port);
    if (attempt == Attempt::TooLate) {
        m_foreignPorts.tryAgain();
        announcePorts();
    }
    return false;
}

bool JackClient::giveOwnPort(
    const std::shared_ptr<DestinationLane>& lane, const std::string& portName)
{
    jack_port_t* const port = m_ownPorts.take(portName, PortDirection::Output);
    if (!port)
        return false;
    lane->bind(port);
    if (m_lanes.add(lane))
        return true;
    lane->bind(nullptr);
    m_ownPorts.giveBack(portName, port);
    return false;
}

void JackClient::connectDestination(
    const std::shared_ptr<DestinationLane>& lane, const std::string& portName)
{
    const bool hasPort = isAlive() && (lane->port() || giveOwnPort(lane, portName));
    if (hasPort && connectEffectively(lane->port(), lane->destinationName()) == Attempt::Connected)
        lane->connected();
    else
        lane->disconnected();
}

void JackClient::disconnect(jack_port_t* port)
{
    if (isAlive() && port)
        jack_port_disconnect(m_handle, port);
}

} // namespace kestrel
