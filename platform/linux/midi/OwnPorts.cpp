#include "platform/linux/midi/OwnPorts.h"

#include <jack/jack.h>

namespace kestrel {

PortDirection OwnPorts::directionOf(const jack_port_t* port)
{
    return (jack_port_flags(port) & JackPortIsOutput) != 0 ? PortDirection::Output
                                                           : PortDirection::Input;
}

jack_port_t* OwnPorts::registerPort(const std::string& name, PortDirection direction)
{
    const int copy = ++m_registered[name];
    const std::string unique = copy == 1 ? name : name + " " + std::to_string(copy);
    return jack_port_register(m_client, unique.c_str(), JACK_DEFAULT_MIDI_TYPE,
        direction == PortDirection::Output ? JackPortIsOutput : JackPortIsInput, 0);
}

bool OwnPorts::reserve(const std::string& name, PortDirection direction)
{
    jack_port_t* const port = registerPort(name, direction);
    if (port)
        giveBack(name, port);
    return port != nullptr;
}

jack_port_t* OwnPorts::take(const std::string& name, PortDirection direction)
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

} // namespace kestrel
