#pragma once

#include "tools/zenta-console/ConsolePackets.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::console {

// The console's MIDI ports: pairs of an output and an input. One pair carries the traffic.
class ConsolePorts {
public:
    static constexpr int TrafficPair = 5; // the last pair when there are fewer

    struct Arrival {
        int pair = 0; // counted from 1
        std::uint64_t monotonicUs = 0;
        Bytes packet;
    };

    virtual ~ConsolePorts() = default;

    // descriptor() is readable when packets have arrived, packets have been sent, or the server has
    // gone. lower() is called before the news is taken.
    [[nodiscard]] virtual int descriptor() const = 0;
    virtual void lower() = 0;

    // False when the packet cannot be sent.
    [[nodiscard]] virtual bool send(const Bytes& packet) = 0;
    [[nodiscard]] virtual std::vector<Arrival> takeArrivals() = 0;
    // True when the connected clients have had the time to read every packet.
    [[nodiscard]] virtual bool isAllSent() const = 0;
    // True when a client is connected to the output that carries the traffic.
    [[nodiscard]] virtual bool hasListener() const = 0;
    [[nodiscard]] virtual bool isServerGone() const = 0;
    [[nodiscard]] virtual int trafficPair() const = 0;
};

// Each system's folder defines the following three once.

// Throws std::runtime_error when there is no MIDI server, or the name is taken.
[[nodiscard]] std::unique_ptr<ConsolePorts> openConsolePorts(const std::string& name, int pairs);

// What this system calls the ports, for the help text.
[[nodiscard]] std::string_view portsDescription();

// What this system calls its MIDI server, in messages.
[[nodiscard]] std::string_view serverName();

} // namespace kestrel::console
