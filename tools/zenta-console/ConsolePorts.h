#pragma once

#include "platform/linux/midi/PacketRing.h"
#include "platform/linux/midi/Wakeup.h"
#include "tools/zenta-console/ConsolePackets.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct _jack_client;
struct _jack_port;

namespace kestrel::console {

// The console's MIDI ports: a JACK client with pairs of an output and an input port. One pair
// carries the traffic.
class ConsolePorts {
public:
    static constexpr int TrafficPair = 5; // the last pair when there are fewer

    struct Arrival {
        int pair = 0; // counted from 1
        std::uint64_t monotonicUs = 0;
        Bytes packet;
    };

    // Throws std::runtime_error when there is no server, or the name is taken.
    ConsolePorts(const std::string& name, int pairs);
    ~ConsolePorts();
    ConsolePorts(const ConsolePorts&) = delete;
    ConsolePorts& operator=(const ConsolePorts&) = delete;

    // descriptor() is readable when packets have arrived, packets have been sent, or the server has
    // gone.
    [[nodiscard]] int descriptor() const { return m_wakeup.descriptor(); }
    void lower() { m_wakeup.lower(); }

    // False when the queue of packets to send is full.
    [[nodiscard]] bool send(const Bytes& packet);
    [[nodiscard]] std::vector<Arrival> takeArrivals();
    // True when the connected clients have had a whole cycle to read every packet.
    [[nodiscard]] bool isAllSent() const { return m_left.load() == m_pushed; }
    // True when a client is connected to the output that carries the traffic.
    [[nodiscard]] bool hasListener() const;
    [[nodiscard]] bool isServerGone() const { return m_isServerGone.load(); }
    [[nodiscard]] int trafficPair() const;

private:
    struct Input {
        _jack_port* port = nullptr;
        PacketRing ring { std::size_t(1) << 16 };
    };

    void registerPorts(int pairs);
    void process(std::uint32_t frames);
    [[nodiscard]] bool receive(std::uint32_t frames);
    [[nodiscard]] bool transmit(std::uint32_t frames);

    Wakeup m_wakeup;
    _jack_client* m_client = nullptr;
    std::vector<_jack_port*> m_outputs;
    std::vector<std::unique_ptr<Input>> m_inputs;
    PacketRing m_toSend { std::size_t(1) << 20 };
    std::uint64_t m_pushed = 0;
    // Packets written by the end of this cycle and of each of the two cycles before.
    std::array<std::uint64_t, 3> m_written {};
    std::atomic<std::uint64_t> m_left { 0 };
    std::atomic<bool> m_isServerGone { false };
};

} // namespace kestrel::console
