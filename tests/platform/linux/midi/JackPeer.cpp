#include "tests/platform/linux/midi/JackPeer.h"

#include "platform/linux/midi/Uncancelled.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <stdexcept>
#include <thread>
#include <utility>

namespace kestrel::test {

JackPeer::JackPeer(const std::string& name, Start start)
    : m_client(jack_client_open(name.c_str(), JackNoStartServer, nullptr))
{
    if (!m_client)
        throw std::runtime_error("no JACK server for " + name);
    jack_set_process_callback(
        m_client,
        [](jack_nframes_t frames, void* self) {
            uncancelled([=] { static_cast<JackPeer*>(self)->process(frames); });
            return 0;
        },
        this);
    // From the first change of the graph on, closing the peer rarely cancels its notification
    // thread while it holds a lock of JACK or of the thread sanitizer.
    jack_set_graph_order_callback(
        m_client,
        [](void*) {
            cancelOnlyAtCancellationPoints();
            return 0;
        },
        nullptr);
    if (start == Start::Active)
        activate();
}

JackPeer::~JackPeer()
{
    release();
    jack_client_close(m_client);
}

void JackPeer::activate()
{
    if (jack_activate(m_client) != 0)
        throw std::runtime_error("jack_activate");
}

std::string JackPeer::name() const
{
    return jack_get_client_name(m_client);
}

void JackPeer::add(const std::string& name, const char* type, unsigned long flags)
{
    jack_port_t* const port = jack_port_register(m_client, name.c_str(), type, flags, 0);
    if (!port)
        throw std::runtime_error("jack_port_register " + name);
    const std::lock_guard lock(m_mutex);
    if (std::string(type) == JACK_DEFAULT_MIDI_TYPE)
        m_ports[name] = Port { port, flags == JackPortIsOutput, {} };
}

void JackPeer::addOutput(const std::string& name)
{
    add(name, JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput);
}

void JackPeer::addInput(const std::string& name)
{
    add(name, JACK_DEFAULT_MIDI_TYPE, JackPortIsInput);
}

void JackPeer::addAudioOutput(const std::string& name)
{
    add(name, JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
}

void JackPeer::addPairs(int count)
{
    for (int i = 1; i <= count; ++i) {
        addOutput("midi_" + std::to_string(i));
        addInput("midi_" + std::to_string(i) + "_in");
    }
}

void JackPeer::rename(const std::string& from, const std::string& to)
{
    std::unique_lock lock(m_mutex);
    auto node = m_ports.extract(from);
    jack_port_t* const port = node.mapped().port;
    node.key() = to;
    m_ports.insert(std::move(node));
    lock.unlock();
    if (jack_port_rename(m_client, port, to.c_str()) != 0)
        throw std::runtime_error("jack_port_rename " + from);
}

void JackPeer::remove(const std::string& name)
{
    std::unique_lock lock(m_mutex);
    jack_port_t* const port = m_ports.at(name).port;
    m_ports.erase(name);
    lock.unlock();
    jack_port_unregister(m_client, port);
}

void JackPeer::send(const std::string& output, const std::vector<Bytes>& packets)
{
    const std::lock_guard lock(m_mutex);
    auto& queue = m_ports.at(output).packets;
    queue.insert(queue.end(), packets.begin(), packets.end());
}

bool JackPeer::hasSentAll(const std::string& output, std::chrono::milliseconds timeout)
{
    std::unique_lock lock(m_mutex);
    const auto& packets = m_ports.at(output).packets;
    if (!m_changed.wait_for(lock, timeout, [&] { return packets.empty(); }))
        return false;
    const int last = m_cycles;
    return m_changed.wait_for(lock, timeout, [&] { return m_cycles > last; });
}

void JackPeer::overrun(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    m_overrun = time;
    waitForCycle(lock);
}

void JackPeer::hold()
{
    std::unique_lock lock(m_mutex);
    m_isHeld = true;
    waitForCycle(lock);
}

void JackPeer::release()
{
    const std::lock_guard lock(m_mutex);
    m_isHeld = false;
    m_changed.notify_all();
}

int JackPeer::lateCycles()
{
    std::unique_lock lock(m_mutex);
    waitForCycle(lock);
    return m_lateCycles;
}

void JackPeer::waitForCycle(std::unique_lock<std::mutex>& lock)
{
    const int last = m_cycles;
    m_changed.wait(lock, [&] { return m_cycles > last; });
}

std::vector<Bytes> JackPeer::received(
    const std::string& input, std::size_t count, std::chrono::milliseconds timeout)
{
    std::unique_lock lock(m_mutex);
    const auto& packets = m_ports.at(input).packets;
    m_changed.wait_for(lock, timeout, [&] { return packets.size() >= count; });
    return { packets.begin(), packets.end() };
}

bool JackPeer::connect(const std::string& output, const std::string& input)
{
    return jack_connect(m_client, output.c_str(), input.c_str()) == 0;
}

bool JackPeer::disconnect(const std::string& output, const std::string& input)
{
    return jack_disconnect(m_client, output.c_str(), input.c_str()) == 0;
}

std::vector<std::string> JackPeer::connections(const std::string& port) const
{
    std::vector<std::string> names;
    const char** const found
        = jack_port_get_all_connections(m_client, jack_port_by_name(m_client, port.c_str()));
    for (const char** name = found; name && *name; ++name)
        names.emplace_back(*name);
    if (found)
        jack_free(found);
    return names;
}

void JackPeer::process(std::uint32_t frames)
{
    beginCycle(frames);
    const std::lock_guard lock(m_mutex);
    for (auto& [name, port] : m_ports) {
        void* const buffer = jack_port_get_buffer(port.port, frames);
        if (port.isOutput) {
            jack_midi_clear_buffer(buffer);
            while (!port.packets.empty()
                && port.packets.front().size() <= jack_midi_max_event_size(buffer)
                && jack_midi_event_write(
                       buffer, 0, port.packets.front().data(), port.packets.front().size())
                    == 0)
                port.packets.pop_front();
            continue;
        }
        takeEvents(buffer, port);
    }
    m_changed.notify_all();
}

void JackPeer::beginCycle(std::uint32_t frames)
{
    const std::uint32_t cycle = jack_last_frame_time(m_client);
    std::unique_lock lock(m_mutex);
    if (cycle != std::exchange(m_lastCycle, cycle).value_or(cycle - frames) + frames)
        ++m_lateCycles;
    ++m_cycles;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return !m_isHeld; });
    const auto overrun = std::exchange(m_overrun, std::chrono::milliseconds(0));
    lock.unlock();
    std::this_thread::sleep_for(overrun);
}

// This is a separate function because the suppressions of the thread sanitizer name it.
void JackPeer::takeEvents(void* buffer, Port& port)
{
    jack_midi_event_t event;
    for (std::uint32_t i = 0; jack_midi_event_get(&event, buffer, i) == 0; ++i)
        port.packets.emplace_back(event.buffer, event.buffer + event.size);
}

} // namespace kestrel::test
