#include "bench/latency/AnswerListener.h"

#include "bench/latency/Clock.h"

#include <jack/midiport.h>

#include <stdexcept>

namespace kestrel::bench {

AnswerListener::AnswerListener(const std::string& serverName, const std::string& answeringPort)
    : m_client(jack_client_open("listener",
                   static_cast<jack_options_t>(JackNoStartServer | JackServerName), nullptr,
                   serverName.c_str()),
        &jack_client_close)
{
    if (!m_client)
        throw std::runtime_error("the JACK server takes no listener");
    m_input = jack_port_register(m_client.get(), "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    jack_set_process_callback(m_client.get(), &AnswerListener::process, this);
    const std::string own = std::string(jack_get_client_name(m_client.get())) + ":in";
    if (!m_input || jack_activate(m_client.get()) != 0
        || jack_connect(m_client.get(), answeringPort.c_str(), own.c_str()) != 0)
        throw std::runtime_error("no listener could be connected to " + answeringPort);
}

int AnswerListener::process(jack_nframes_t frames, void* context)
{
    auto& self = *static_cast<AnswerListener*>(context);
    void* input = jack_port_get_buffer(self.m_input, frames);
    const auto count = jack_midi_get_event_count(input);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, input, i) != 0 || event.size < 3)
            continue;
        if (event.buffer[0] == 0x90 && event.buffer[2] == 0x7F) {
            self.m_lastAnswerTime = monotonicNanoseconds();
            ++self.m_answers;
        }
    }
    return 0;
}

} // namespace kestrel::bench
