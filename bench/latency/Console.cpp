#include "bench/latency/Console.h"

#include "bench/latency/Clock.h"
#include "bench/latency/Interruption.h"

#include <jack/midiport.h>

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <stdexcept>
#include <thread>

namespace kestrel::bench {

namespace {
constexpr std::int64_t FramesPerSecond = 48000;
constexpr std::size_t TrafficPair = 4;

bool write(void* buffer, std::initializer_list<jack_midi_data_t> bytes)
{
    return jack_midi_event_write(buffer, 0, bytes.begin(), bytes.size()) == 0;
}

bool writeTwoPackets(void* buffer, std::uint8_t code)
{
    return write(buffer, { 0xB0, 0x0F, 0x40 }) && write(buffer, { 0xB0, 0x2F, code });
}
} // namespace

Console::Console(const std::string& serverName)
    : m_streamTimes(MostStreamStrokes)
    , m_client(
          jack_client_open("ZENTA",
              static_cast<jack_options_t>(JackNoStartServer | JackServerName | JackUseExactName),
              nullptr, serverName.c_str()),
          &jack_client_close)
{
    if (!m_client)
        throw std::runtime_error("the JACK server takes no client named ZENTA");
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        const std::string name = "midi_" + std::to_string(i + 1);
        m_outputs[i] = jack_port_register(m_client.get(), name.c_str(), JACK_DEFAULT_MIDI_TYPE,
            JackPortIsOutput | JackPortIsPhysical | JackPortIsTerminal, 0);
        m_inputs[i] = jack_port_register(m_client.get(), (name + "_in").c_str(),
            JACK_DEFAULT_MIDI_TYPE, JackPortIsInput | JackPortIsPhysical | JackPortIsTerminal, 0);
        if (!m_outputs[i] || !m_inputs[i])
            throw std::runtime_error("the console's JACK ports could not be registered");
    }
    jack_set_process_callback(m_client.get(), &Console::process, this);
    jack_set_xrun_callback(
        m_client.get(),
        [](void* context) {
            ++static_cast<Console*>(context)->m_overruns;
            return 0;
        },
        this);
    if (jack_activate(m_client.get()) != 0)
        throw std::runtime_error("the console's JACK client could not be activated");
}

void Console::send(const Stroke& stroke, PressForm form)
{
    give(form == PressForm::TwoPackets ? Order::TwoPackets : Order::OnePacket, stroke.code());
}

void Console::give(Order order, std::uint8_t code)
{
    sentAt(); // of the order before
    m_order = static_cast<std::uint32_t>(order) | code;
}

std::int64_t Console::sentAt()
{
    const auto deadline = monotonicNanoseconds() + 2'000'000'000;
    while (m_order != 0) {
        Interruption::check();
        if (monotonicNanoseconds() > deadline)
            throw std::runtime_error("the JACK server has stopped: no cycle for two seconds");
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    return m_orderTime;
}

std::int64_t Console::sendHeartbeat()
{
    give(Order::Heartbeat);
    return sentAt();
}

void Console::startStream(std::size_t strokes, int strokesPerSecond)
{
    m_streamLength = 0;
    m_streamSent = 0;
    m_streamPerSecond = strokesPerSecond;
    m_streamLength = std::min(strokes, MostStreamStrokes);
}

void Console::connectReference(const std::string& clientName)
{
    const std::string input = clientName + ":in";
    const std::string answer = clientName + ":answer";
    // The presses are connected first: JACK delays the connection that closes the loop by one
    // cycle, and that must be the one of the answers.
    const bool connected = jack_connect(m_client.get(), "ZENTA:midi_5", input.c_str()) == 0
        && jack_connect(m_client.get(), answer.c_str(), "ZENTA:midi_5_in") == 0;
    if (!connected)
        throw std::runtime_error("the reference program's JACK ports could not be connected");
}

std::string Console::answeringPort() const
{
    const char** names = jack_port_get_all_connections(m_client.get(), m_inputs[TrafficPair]);
    std::string first = names && names[0] ? names[0] : "";
    jack_free(names);
    return first;
}

int Console::process(jack_nframes_t frames, void* context)
{
    auto& self = *static_cast<Console*>(context);
    void* output = nullptr;
    for (std::size_t i = 0; i < self.m_outputs.size(); ++i) {
        output = jack_port_get_buffer(self.m_outputs[i], frames);
        jack_midi_clear_buffer(output);
    }
    ++self.m_cycles;
    self.readAnswers(jack_port_get_buffer(self.m_inputs[TrafficPair], frames));
    self.writeFlood(output, frames);
    self.writeStream(output, frames);
    self.writeOrder(output);
    self.writeHeartbeat(output, frames);
    return 0;
}

void Console::readAnswers(void* input)
{
    const auto count = jack_midi_get_event_count(input);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, input, i) != 0 || event.size < 3)
            continue;
        if (event.buffer[0] == 0x90 && event.buffer[1] == 0x00 && event.buffer[2] == 0x7F) {
            m_lastAnswerTime = monotonicNanoseconds();
            ++m_answers;
        }
    }
}

void Console::writeFlood(void* output, jack_nframes_t frames)
{
    m_floodDue += std::int64_t { m_floodPerSecond } * frames;
    for (; m_floodDue >= FramesPerSecond; m_floodDue -= FramesPerSecond) {
        const auto zone = static_cast<jack_midi_data_t>(m_floodCount % 10);
        const auto letter = static_cast<jack_midi_data_t>('A' + m_floodCount / 10 % 26);
        ++m_floodCount;
        write(output,
            { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, zone, letter, letter, letter, letter,
                letter, letter, letter, letter, letter, letter, 0xF7 });
    }
}

void Console::writeStream(void* output, jack_nframes_t frames)
{
    const std::size_t length = m_streamLength;
    std::size_t sent = m_streamSent;
    if (sent >= length) {
        m_streamDue = 0;
        return;
    }
    m_streamDue += std::int64_t { m_streamPerSecond } * frames;
    for (; m_streamDue >= FramesPerSecond && sent < length; m_streamDue -= FramesPerSecond) {
        m_streamTimes[sent] = monotonicNanoseconds();
        if (!writeTwoPackets(output, strokeOfStream(sent).code()))
            return; // the buffer is full, so this stroke is due again in the next cycle
        m_streamSent = ++sent;
    }
}

void Console::writeOrder(void* output)
{
    const std::uint32_t order = m_order;
    if (order == 0)
        return;
    const auto code = static_cast<std::uint8_t>(order & 0xFF);
    m_orderTime = monotonicNanoseconds();
    switch (static_cast<Order>(order & 0xF00)) {
    case Order::TwoPackets:
        writeTwoPackets(output, code);
        break;
    case Order::OnePacket:
        write(output, { 0xB0, 0x0F, 0x40, 0x2F, code });
        break;
    case Order::Heartbeat:
        write(output, { 0x90, 0x00, 0x00 });
        break;
    case Order::None:
        break;
    }
    m_order = 0;
}

void Console::writeHeartbeat(void* output, jack_nframes_t frames)
{
    m_heartbeatDue += frames;
    if (!m_heartbeatEachSecond || m_heartbeatDue < FramesPerSecond)
        return;
    m_heartbeatDue = 0;
    write(output, { 0x90, 0x00, 0x00 });
}

} // namespace kestrel::bench
