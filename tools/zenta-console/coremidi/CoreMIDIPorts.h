#pragma once

#include "platform/macos/CFHolder.h"
#include "tools/zenta-console/ConsolePorts.h"

#include <CoreMIDI/CoreMIDI.h>

#include <atomic>
#include <deque>
#include <mutex>

namespace kestrel::console {

// Virtual endpoints of CoreMIDI, which belong to no device. They are called after the console:
// "ZENTA midi_1", …, and "ZENTA midi_1_in", …
class CoreMIDIPorts final : public ConsolePorts {
public:
    // Throws std::runtime_error when CoreMIDI refuses.
    CoreMIDIPorts(const std::string& name, int pairs);
    ~CoreMIDIPorts() override;
    CoreMIDIPorts(const CoreMIDIPorts&) = delete;
    CoreMIDIPorts& operator=(const CoreMIDIPorts&) = delete;

    [[nodiscard]] int descriptor() const override { return m_wakeup[0]; }
    void lower() override;

    [[nodiscard]] bool send(const Bytes& packet) override;
    [[nodiscard]] std::vector<Arrival> takeArrivals() override;
    // CoreMIDI has passed a packet on when it takes it.
    [[nodiscard]] bool isAllSent() const override { return true; }
    // CoreMIDI does not tell who listens. Whoever has sent something does.
    [[nodiscard]] bool hasListener() const override { return m_hasHeard.load(); }
    // CoreMIDI does not tell that its server has ended. send() fails from then on.
    [[nodiscard]] bool isServerGone() const override { return false; }
    [[nodiscard]] int trafficPair() const override;

private:
    struct Input {
        CoreMIDIPorts* ports;
        int pair;
    };

    void createPair(const std::string& name, int pair);
    // On a thread of CoreMIDI.
    void receive(const ::MIDIPacketList& list, int pair);

    int m_wakeup[2] = { -1, -1 }; // a pipe
    MIDIClientRef m_client = 0;
    std::vector<MIDIEndpointRef> m_sources;
    std::deque<Input> m_inputs; // CoreMIDI keeps their addresses
    std::atomic<bool> m_hasHeard { false };
    std::mutex m_mutex;
    std::vector<Arrival> m_arrivals; // guarded by m_mutex
};

} // namespace kestrel::console
