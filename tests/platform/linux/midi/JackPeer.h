#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

struct _jack_client;
struct _jack_port;

namespace kestrel::test {

using Bytes = std::vector<std::uint8_t>;

// Another JACK client, such as the driver of a console.
class JackPeer {
public:
    enum class Start { Active, Inactive };

    // Throws std::runtime_error if the server refuses. After the death of the server, destroy the
    // peer before another client is opened, because opening one frees the memory of the dead
    // server.
    explicit JackPeer(const std::string& name, Start start = Start::Active);
    ~JackPeer();
    JackPeer(const JackPeer&) = delete;
    JackPeer& operator=(const JackPeer&) = delete;

    void addOutput(const std::string& name);
    void addInput(const std::string& name);
    void addAudioOutput(const std::string& name);
    void addPairs(int count); // midi_1 with midi_1_in, midi_2 with midi_2_in, …
    void rename(const std::string& from, const std::string& to);
    void remove(const std::string& name);
    void activate();
    // Full names, as a patchbay uses them. False when the server refuses.
    [[nodiscard]] bool connect(const std::string& output, const std::string& input);
    [[nodiscard]] bool disconnect(const std::string& output, const std::string& input);
    // The full names of the ports that a port of any client is connected with.
    [[nodiscard]] std::vector<std::string> connections(const std::string& port) const;
    // The process callback takes this long in the next cycle.
    void overrun(std::chrono::milliseconds time) { m_overrun.store(time); }
    [[nodiscard]] std::string name() const; // the name that the server has given

    // The packets of one call leave in one cycle, up to the size of its buffer.
    void send(const std::string& output, const std::vector<Bytes>& packets);
    // Waits until all packets have left. False after the timeout.
    [[nodiscard]] bool hasSentAll(const std::string& output, std::chrono::milliseconds timeout);
    // Waits for `count` packets and returns all that have arrived, fewer after the timeout.
    [[nodiscard]] std::vector<Bytes> received(
        const std::string& input, std::size_t count, std::chrono::milliseconds timeout);

private:
    void process(std::uint32_t frames);
    void add(const std::string& name, const char* type, unsigned long flags);

    struct Port {
        _jack_port* port = nullptr;
        bool isOutput = false;
        std::deque<Bytes> packets; // to be sent, or received
    };

    static void takeEvents(void* buffer, Port& port);

    _jack_client* m_client = nullptr;
    std::atomic<std::chrono::milliseconds> m_overrun { std::chrono::milliseconds(0) };
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::map<std::string, Port> m_ports;
};

} // namespace kestrel::test
