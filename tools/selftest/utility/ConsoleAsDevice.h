#pragma once

#include "platform/MIDIServices.h"

#include <functional>
#include <memory>

namespace kestrel::selftest {

// MIDI services that show the simulated console as a device. Virtual endpoints belong to no device,
// and a program can make no device, so on macOS the utility would not find the simulator.
// Everything else goes to the real services.
class ConsoleAsDevice final : public MIDIServices {
public:
    // `entities` lists those of the simulated console that exist now; none on a system where it is
    // a device by itself.
    ConsoleAsDevice(
        std::unique_ptr<MIDIServices> services, std::function<std::vector<MIDIEntity>()> entities)
        : m_services(std::move(services))
        , m_entities(std::move(entities))
    {
    }

    std::optional<MIDIClient> createClient(
        std::string_view name, NotifyProc notify, void* refCon) override;
    void disposeClient(MIDIClient client) override { m_services->disposeClient(client); }
    std::optional<MIDIPort> createInputPort(
        MIDIClient client, std::string_view name, ReadProc read, void* refCon) override;
    std::optional<MIDIPort> createOutputPort(MIDIClient client, std::string_view name) override;
    void disposePort(MIDIPort port) override { m_services->disposePort(port); }
    std::vector<MIDIDevice> devices() override;
    bool connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon) override;
    bool answersFor(MIDIEndpoint source, std::int32_t uniqueID) override;
    bool send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet) override;
    void setPacketsLost(std::function<void()> packetsLost) override;

private:
    std::unique_ptr<MIDIServices> m_services;
    std::function<std::vector<MIDIEntity>()> m_entities;
};

} // namespace kestrel::selftest
