#include "tools/zenta-console/jack/JackPorts.h"

#include "platform/linux/midi/Uncancelled.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace kestrel::console {

namespace {
std::uint64_t monotonicUs()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

jack_client_t* openClient(const std::string& name)
{
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    jack_client_t* const client = jack_client_open(name.c_str(), JackNoStartServer, nullptr);
    if (!client)
        throw std::runtime_error("no JACK server answers");
    // With JackUseExactName, JACK would fail without telling why.
    if (name != jack_get_client_name(client)) {
        jack_client_close(client);
        throw std::runtime_error("another JACK client is already called \"" + name + "\"");
    }
    return client;
}
} // namespace

JackPorts::JackPorts(const std::string& name, int pairs)
    : m_client(openClient(name))
{
    jack_set_process_callback(
        m_client,
        [](jack_nframes_t frames, void* self) {
            uncancelled([=] { static_cast<JackPorts*>(self)->process(frames); });
            return 0;
        },
        this);
    jack_on_shutdown(
        m_client,
        [](void* self) { uncancelled([=] { static_cast<JackPorts*>(self)->serverGone(); }); },
        this);
    registerPorts(pairs);
    if (jack_activate(m_client) != 0) {
        jack_client_close(m_client);
        throw std::runtime_error("the JACK server does not activate the client");
    }
}

JackPorts::~JackPorts()
{
    jack_client_close(m_client);
}

void JackPorts::registerPorts(int pairs)
{
    for (int pair = 1; pair <= pairs; ++pair) {
        const std::string name = "midi_" + std::to_string(pair);
        m_outputs.push_back(jack_port_register(
            m_client, name.c_str(), JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0));
        m_inputs.push_back(std::make_unique<Input>());
        m_inputs.back()->port = jack_port_register(
            m_client, (name + "_in").c_str(), JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
        if (!m_outputs.back() || !m_inputs.back()->port) {
            jack_client_close(m_client);
            throw std::runtime_error("the JACK server has no room for the port " + name);
        }
    }
}

int JackPorts::trafficPair() const
{
    return std::min(TrafficPair, static_cast<int>(m_outputs.size()));
}

bool JackPorts::hasListener() const
{
    return jack_port_connected(m_outputs[static_cast<std::size_t>(trafficPair()) - 1]) > 0;
}

bool JackPorts::send(const Bytes& packet)
{
    if (!m_toSend.write(0, packet))
        return false;
    ++m_pushed;
    return true;
}

std::vector<ConsolePorts::Arrival> JackPorts::takeArrivals()
{
    std::vector<Arrival> arrivals;
    for (std::size_t i = 0; i < m_inputs.size(); ++i) {
        PacketRing& ring = m_inputs[i]->ring;
        PacketRing::Position at = ring.begin();
        const PacketRing::Position end = ring.end();
        while (const auto packet = ring.read(at, end))
            arrivals.push_back({ static_cast<int>(i) + 1, packet->timeStamp,
                Bytes(packet->data.begin(), packet->data.end()) });
        ring.release(end);
    }
    return arrivals;
}

void JackPorts::serverGone()
{
    m_isServerGone.store(true);
    m_wakeup.raise();
}

void JackPorts::process(std::uint32_t frames)
{
    const bool arrived = receive(frames);
    const bool left = transmit(frames);
    if (arrived || left)
        m_wakeup.raise();
}

bool JackPorts::receive(std::uint32_t frames)
{
    bool arrived = false;
    for (const auto& input : m_inputs) {
        void* const buffer = jack_port_get_buffer(input->port, frames);
        jack_midi_event_t event;
        for (std::uint32_t i = 0; jack_midi_event_get(&event, buffer, i) == 0; ++i) {
            input->ring.write(monotonicUs(), { event.buffer, event.size });
            arrived = true;
        }
    }
    return arrived;
}

// True when the connected clients have read more packets than at the last call.
bool JackPorts::transmit(std::uint32_t frames)
{
    std::rotate(m_written.begin(), m_written.end() - 1, m_written.end());
    m_written[0] = m_written[1];
    for (jack_port_t* const output : m_outputs)
        jack_midi_clear_buffer(jack_port_get_buffer(output, frames));
    void* const traffic
        = jack_port_get_buffer(m_outputs[static_cast<std::size_t>(trafficPair()) - 1], frames);
    const PacketRing::Position end = m_toSend.end();
    PacketRing::Position at = m_toSend.begin();
    while (const auto packet = m_toSend.read(at, end)) {
        if (packet->data.size() > jack_midi_max_event_size(traffic)
            || jack_midi_event_write(traffic, 0, packet->data.data(), packet->data.size()) != 0)
            break; // the packet goes with the next cycle
        m_toSend.release(at);
        ++m_written[0];
    }
    return m_left.exchange(m_written[2]) != m_written[2];
}

std::unique_ptr<ConsolePorts> openConsolePorts(const std::string& name, int pairs)
{
    return std::make_unique<JackPorts>(name, pairs);
}

std::string_view portsDescription()
{
    return "The JACK client has the output ports midi_1, midi_2, ... and the input ports\n"
           "midi_1_in, midi_2_in, ...";
}

std::string_view serverName()
{
    return "JACK server";
}

} // namespace kestrel::console
