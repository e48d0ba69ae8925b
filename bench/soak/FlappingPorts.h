#pragma once

#include <cstdint>
#include <string>

namespace kestrel::bench {

// Another program on the JACK server, whose client and MIDI ports come and go.
class FlappingPorts {
public:
    explicit FlappingPorts(std::string server)
        : m_server(std::move(server))
    {
    }

    // Connects, registers ports, lets them go again and disconnects. Throws std::runtime_error when
    // the server does not take part.
    void comeAndGo();

    [[nodiscard]] long times() const { return m_times; }

private:
    std::string m_server;
    long m_times = 0;
};

} // namespace kestrel::bench
