#pragma once

#include "platform/linux/midi/PortPairing.h"

#include <map>
#include <string>

struct _jack_client;
struct _jack_port;

namespace kestrel {

// The ports of our own JACK client. They stay until the client is closed. Control thread only.
class OwnPorts {
public:
    void bind(_jack_client* client) { m_client = client; }

    // Registers a port for a later take(). False when the server refuses.
    [[nodiscard]] bool reserve(const std::string& name, PortDirection direction);
    // Returns a reserved port or a new one. Null when the server refuses.
    [[nodiscard]] _jack_port* take(const std::string& name, PortDirection direction);
    // Makes the port free for the next take().
    void giveBack(const std::string& name, _jack_port* port) { m_reserved.emplace(name, port); }

    [[nodiscard]] static PortDirection directionOf(const _jack_port* port);

private:
    [[nodiscard]] _jack_port* registerPort(const std::string& name, PortDirection direction);

    _jack_client* m_client = nullptr;
    std::map<std::string, int> m_registered; // how often each name was requested
    std::multimap<std::string, _jack_port*> m_reserved;
};

} // namespace kestrel
