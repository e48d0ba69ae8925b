#include "bench/soak/FlappingPorts.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <array>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

namespace kestrel::bench {

namespace {
constexpr std::chrono::milliseconds Stay { 300 };
constexpr std::array PortNames { "one", "two", "three" };
} // namespace

void FlappingPorts::comeAndGo()
{
    const std::unique_ptr<jack_client_t, decltype(&jack_client_close)> client(
        jack_client_open("passer-by",
            static_cast<jack_options_t>(JackNoStartServer | JackServerName), nullptr,
            m_server.c_str()),
        &jack_client_close);
    if (!client)
        throw std::runtime_error("the JACK server takes no client");
    std::array<jack_port_t*, PortNames.size()> ports {};
    for (std::size_t i = 0; i < ports.size(); ++i)
        ports[i] = jack_port_register(
            client.get(), PortNames[i], JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    if (jack_activate(client.get()) != 0)
        throw std::runtime_error("the JACK server activates no client");
    std::this_thread::sleep_for(Stay);
    for (jack_port_t* port : ports)
        jack_port_unregister(client.get(), port);
    std::this_thread::sleep_for(Stay);
    ++m_times;
}

} // namespace kestrel::bench
