#pragma once

#include "platform/MIDIServices.h"
#include "platform/macos/Activity.h"
#include "platform/macos/PacketInbox.h"
#include "platform/macos/ReadGates.h"

#include <map>
#include <memory>
#include <optional>

namespace kestrel {

// MIDI through CoreMIDI, one call an operation. Packets arrive on a thread of CoreMIDI's and cross
// to the main thread here; notifications come on it by themselves.
class CoreMIDIServices final : public MIDIServices {
public:
    // `mainLoop` outlives the services.
    explicit CoreMIDIServices(MainLoop& mainLoop);
    ~CoreMIDIServices() override;
    CoreMIDIServices(const CoreMIDIServices&) = delete;
    CoreMIDIServices& operator=(const CoreMIDIServices&) = delete;

    std::optional<MIDIClient> createClient(
        std::string_view name, NotifyProc notify, void* refCon) override;
    void disposeClient(MIDIClient client) override;
    std::optional<MIDIPort> createInputPort(
        MIDIClient client, std::string_view name, ReadProc read, void* refCon) override;
    std::optional<MIDIPort> createOutputPort(MIDIClient client, std::string_view name) override;
    void disposePort(MIDIPort port) override;
    std::vector<MIDIDevice> devices() override;
    bool connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon) override;
    bool send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet) override;

private:
    // What CoreMIDI keeps a pointer to as long as the client lives.
    struct NotifyTarget {
        NotifyProc notify;
        void* refCon;
    };
    struct InputPort {
        MIDIClient client;
        ReadGates::Ticket ticket;
        std::shared_ptr<PacketInbox> inbox;
    };

    static void shut(const InputPort& port);

    MainLoop& m_mainLoop;
    std::map<MIDIClient, std::unique_ptr<NotifyTarget>> m_clients;
    std::map<MIDIPort, InputPort> m_inputPorts;
    Activity m_punctual { Activity::Kind::PunctualTimers }; // so is who waits for the first client
    std::optional<Activity> m_latencyCritical; // while there is a client
};

} // namespace kestrel
