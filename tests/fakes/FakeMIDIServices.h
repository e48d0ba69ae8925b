#pragma once

#include "platform/MIDIServices.h"

#include <set>
#include <string>
#include <vector>

namespace kestrel::test {

using Bytes = std::vector<std::uint8_t>;

// MIDI services in memory: devices as the test lists them, every operation recorded in words, any
// of them failing on demand.
class FakeMIDIServices final : public MIDIServices {
public:
    struct Sent {
        MIDIPort port;
        MIDIEndpoint destination;
        std::uint64_t timeStamp;
        Bytes data;
    };

    [[nodiscard]] MIDIStatus createClient(
        std::string_view name, NotifyProc notify, void* refCon, MIDIClient& client) override;
    void disposeClient(MIDIClient client) override;
    [[nodiscard]] MIDIStatus createInputPort(MIDIClient client, std::string_view name,
        ReadProc read, void* refCon, MIDIPort& port) override;
    [[nodiscard]] MIDIStatus createOutputPort(
        MIDIClient client, std::string_view name, MIDIPort& port) override;
    void disposePort(MIDIPort port) override;
    [[nodiscard]] std::vector<MIDIDevice> devices() override;
    [[nodiscard]] MIDIStatus connectSource(
        MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon) override;
    [[nodiscard]] MIDIStatus send(
        MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet) override;

    // As if one packet list with these packets came in from the connected source.
    void deliver(const std::vector<Bytes>& packets) const;
    void notify(std::int32_t messageID, std::int32_t childType) const;

    std::vector<MIDIDevice> deviceList;
    std::set<std::string> failing; // operation names, or "connect N" for one source
    std::vector<std::string> calls;
    std::vector<Sent> sent;

private:
    [[nodiscard]] bool fails(const std::string& operation) const
    {
        return failing.contains(operation);
    }

    std::uint32_t m_lastReference = 0;
    NotifyProc m_notify = nullptr;
    void* m_notifyRefCon = nullptr;
    ReadProc m_read = nullptr;
    void* m_readRefCon = nullptr;
    void* m_connectionRefCon = nullptr;
};

// A device of `entityCount` entities with one source (100 k + 10 e + 1) and one destination
// (100 k + 10 e + 2) each, for device number k and entity e; the source's unique ID is −(100 k +
// e).
[[nodiscard]] MIDIDevice device(int number, std::string model, int entityCount);

} // namespace kestrel::test
