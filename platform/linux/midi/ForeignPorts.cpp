#include "platform/linux/midi/ForeignPorts.h"

#include <jack/jack.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace kestrel {

namespace {
PortChanges::TimePoint now()
{
    return std::chrono::steady_clock::now();
}
} // namespace

void ForeignPorts::bind(_jack_client* client, std::string askedName)
{
    const std::lock_guard lock(m_mutex); // a thread of the client tells of ports before long
    m_client = client;
    m_askedName = std::move(askedName);
}

std::optional<PortListing> ForeignPorts::listing(const jack_port_t* port) const
{
    const char* const name = port ? jack_port_name(port) : nullptr;
    const char* const type = name ? jack_port_type(port) : nullptr;
    if (!type || std::strcmp(type, JACK_DEFAULT_MIDI_TYPE) != 0
        || isNameFor(m_askedName, clientOf(name)))
        return {};
    const bool isOutput = (jack_port_flags(port) & JackPortIsOutput) != 0;
    return PortListing { name, isOutput ? PortDirection::Output : PortDirection::Input };
}

std::vector<PortListing> ForeignPorts::list() const
{
    std::vector<PortListing> ports;
    const char** const names = jack_get_ports(m_client, nullptr, JACK_DEFAULT_MIDI_TYPE, 0);
    for (const char** name = names; name && *name; ++name) {
        if (auto port = listing(jack_port_by_name(m_client, *name)))
            ports.push_back(*std::move(port));
    }
    if (names)
        jack_free(names);
    return ports;
}

void ForeignPorts::learn()
{
    const std::lock_guard lock(m_mutex);
    for (const PortListing& port : list()) {
        if (const jack_port_t* const known = jack_port_by_name(m_client, port.name.c_str()))
            m_known[known] = port;
    }
}

// JACK also calls this for a port that has been listed for a while, when the port's client becomes
// active: the port can be connected only from then on.
void ForeignPorts::registered(std::uint32_t identifier)
{
    const jack_port_t* const port = jack_port_by_id(m_client, identifier);
    const auto found = listing(port);
    if (!found)
        return;
    const std::lock_guard lock(m_mutex);
    const auto before
        = m_known.contains(port) ? PortChanges::Before::Present : PortChanges::Before::Absent;
    m_known[port] = *found;
    m_changes.came(*found, before, now());
}

std::optional<PortListing> ForeignPorts::unregistered(std::uint32_t identifier)
{
    const std::lock_guard lock(m_mutex);
    const auto gone = m_known.extract(jack_port_by_id(m_client, identifier));
    if (gone.empty())
        return {};
    m_changes.went(gone.mapped(), now());
    return gone.mapped();
}

std::optional<PortListing> ForeignPorts::known(std::uint32_t identifier) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_known.find(jack_port_by_id(m_client, identifier));
    return found == m_known.end() ? std::nullopt : std::optional(found->second);
}

bool ForeignPorts::hasNews()
{
    const std::lock_guard lock(m_mutex);
    const PortChanges::Due due = m_changes.due();
    const bool isNews = due.familiar < m_toldDue.familiar || due.other < m_toldDue.other;
    m_toldDue.familiar = std::min(m_toldDue.familiar, due.familiar);
    m_toldDue.other = std::min(m_toldDue.other, due.other);
    return isNews;
}

void ForeignPorts::cut(const PortListing& port)
{
    const std::lock_guard lock(m_mutex);
    m_changes.cut(port, now());
}

void ForeignPorts::want(const PortListing& port)
{
    const std::lock_guard lock(m_mutex);
    m_changes.want(port);
}

void ForeignPorts::know(const std::string& client)
{
    const std::lock_guard lock(m_mutex);
    m_changes.know(client);
}

void ForeignPorts::tryAgain()
{
    const std::lock_guard lock(m_mutex);
    m_changes.tryAgain(now());
}

PortChanges::Due ForeignPorts::tellDue()
{
    const std::lock_guard lock(m_mutex);
    m_toldDue = m_changes.due();
    return m_toldDue;
}

unsigned ForeignPorts::takeChanges()
{
    const std::lock_guard lock(m_mutex);
    return m_changes.take();
}

} // namespace kestrel
