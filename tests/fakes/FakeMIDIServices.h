#pragma once

#include "platform/MIDIServices.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kestrel::test {

using Bytes = std::vector<std::uint8_t>;

// MIDI services in memory: devices as the test lists them, every operation recorded in words, any
// of them failing on demand. They are as strict as the real ones: one client at a time, references
// that are no longer valid are refused, and whatever has been disposed of is not called again.
class FakeMIDIServices final : public MIDIServices {
public:
    struct Sent {
        MIDIPort port;
        MIDIEndpoint destination;
        std::uint64_t timeStamp;
        Bytes data;
    };

    [[nodiscard]] std::optional<MIDIClient> createClient(
        std::string_view name, NotifyProc notify, void* refCon) override;
    void disposeClient(MIDIClient client) override;
    [[nodiscard]] std::optional<MIDIPort> createInputPort(
        MIDIClient client, std::string_view name, ReadProc read, void* refCon) override;
    [[nodiscard]] std::optional<MIDIPort> createOutputPort(
        MIDIClient client, std::string_view name) override;
    void disposePort(MIDIPort port) override;
    [[nodiscard]] std::vector<MIDIDevice> devices() override;
    [[nodiscard]] bool connectSource(
        MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon) override;
    // Not recorded, because it has no effect.
    [[nodiscard]] bool answersFor(MIDIEndpoint source, std::int32_t uniqueID) override;
    [[nodiscard]] bool send(
        MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet) override;
    void setPacketsLost(std::function<void()> value) override { packetsLost = std::move(value); }

    // As if the main loop had found one packet list with these packets from the connected source.
    // Nobody hears of it when no source is connected.
    void deliver(const std::vector<Bytes>& packets) const;
    // As if the main loop had found this notification; nobody hears of it without a client.
    void notify(std::int32_t messageID, std::int32_t childType) const;

    std::vector<MIDIDevice> deviceList;
    std::set<std::string> failing; // operation names, or "connect N" for one source
    std::vector<std::string> calls;
    std::function<void()> packetsLost; // called as if the main loop had learnt of a loss
    std::vector<Sent> sent; // what was given to send(), accepted or not

private:
    struct InputPort {
        ReadProc read;
        void* refCon;
        std::vector<void*> connections; // the reference value of each
    };

    [[nodiscard]] bool fails(const std::string& operation) const
    {
        return failing.contains(operation);
    }
    [[nodiscard]] bool isOpen(MIDIClient client) const { return client != 0 && client == m_client; }
    [[nodiscard]] bool hasSource(MIDIEndpoint source) const;

    std::uint32_t m_lastReference = 0;
    MIDIClient m_client = 0; // 0 = none is open
    NotifyProc m_notify = nullptr;
    void* m_notifyRefCon = nullptr;
    std::map<MIDIPort, InputPort> m_inputPorts;
    std::set<MIDIPort> m_outputPorts;
};

// A device of `entityCount` entities with one source (100 k + 10 e + 1) and one destination
// (100 k + 10 e + 2) each, for device number k and entity e; the source's unique ID is −(100 k +
// e).
[[nodiscard]] MIDIDevice device(int number, std::string model, int entityCount);

} // namespace kestrel::test
