#pragma once

#include "platform/MIDIServices.h"
#include "platform/macos/Activity.h"
#include "platform/macos/PacketInbox.h"
#include "platform/macos/ReadGates.h"

#include <map>
#include <memory>
#include <optional>

namespace kestrel {

// The MIDI services over CoreMIDI. Packets arrive on a thread of CoreMIDI, and this class passes
// them on to the main thread. CoreMIDI sends notifications on the main thread.
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
    bool answersFor(MIDIEndpoint source, std::int32_t uniqueID) override;
    bool send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet) override;
    // CoreMIDI calls the read procedure with every packet, however late, and the inbox takes all.
    void setPacketsLost(std::function<void()>) override { }

private:
    // CoreMIDI keeps a pointer to this object as long as the client lives.
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
    // Timers must be punctual before the first client exists as well.
    Activity m_punctual { Activity::Kind::PunctualTimers };
    std::optional<Activity> m_latencyCritical; // set while there is a client
};

} // namespace kestrel
