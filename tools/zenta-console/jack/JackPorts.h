#pragma once

#include "platform/linux/midi/PacketRing.h"
#include "platform/linux/midi/Wakeup.h"
#include "tools/zenta-console/ConsolePorts.h"

#include <array>
#include <atomic>
#include <cstddef>

struct _jack_client;
struct _jack_port;

namespace kestrel::console {

// The ports of a JACK client.
class JackPorts final : public ConsolePorts {
public:
    // Throws std::runtime_error when there is no server, or the name is taken.
    JackPorts(const std::string& name, int pairs);
    ~JackPorts() override;
    JackPorts(const JackPorts&) = delete;
    JackPorts& operator=(const JackPorts&) = delete;

    [[nodiscard]] int descriptor() const override { return m_wakeup.descriptor(); }
    void lower() override { m_wakeup.lower(); }

    // False when the queue of packets to send is full.
    [[nodiscard]] bool send(const Bytes& packet) override;
    [[nodiscard]] std::vector<Arrival> takeArrivals() override;
    // True when the connected clients have had a whole cycle to read every packet.
    [[nodiscard]] bool isAllSent() const override { return m_left.load() == m_pushed; }
    [[nodiscard]] bool hasListener() const override;
    [[nodiscard]] bool isServerGone() const override { return m_isServerGone.load(); }
    [[nodiscard]] int trafficPair() const override;

private:
    struct Input {
        _jack_port* port = nullptr;
        PacketRing ring { std::size_t(1) << 16 };
    };

    void registerPorts(int pairs);
    void serverGone();
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
