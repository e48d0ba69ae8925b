#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
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
    // Makes the process callback take this long. Returns once such a cycle has begun.
    void overrun(std::chrono::milliseconds time);
    // Holds the process callback until release(). Returns once it is held.
    void hold();
    void release();
    [[nodiscard]] std::string name() const; // the name that the server has given

    // The packets of one call leave in one cycle, up to the size of its buffer.
    void send(const std::string& output, const std::vector<Bytes>& packets);
    // Waits until all packets have left and the cycle that took the last one is over, for all
    // clients if the server waits for them. False after the timeout.
    [[nodiscard]] bool hasSentAll(const std::string& output, std::chrono::milliseconds timeout);
    // How many cycles began later than one period after the one before. Waits for another cycle,
    // so that it counts all that anybody has noticed until now.
    [[nodiscard]] int lateCycles();
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

    void beginCycle(std::uint32_t frames);
    void waitForCycle(std::unique_lock<std::mutex>& lock);
    static void takeEvents(void* buffer, Port& port);

    _jack_client* m_client = nullptr;
    std::mutex m_mutex; // guards all that follows
    std::condition_variable m_changed; // in each cycle, and when the callback is let go
    std::map<std::string, Port> m_ports;
    std::chrono::milliseconds m_overrun { 0 };
    bool m_isHeld = false;
    int m_cycles = 0; // that have begun
    int m_lateCycles = 0;
    std::optional<std::uint32_t> m_lastCycle; // its first frame
};

} // namespace kestrel::test
