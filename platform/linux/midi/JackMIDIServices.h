#pragma once

#include "platform/MIDIServices.h"
#include "platform/MainLoop.h"
#include "platform/linux/midi/ChangeTeller.h"
#include "platform/linux/midi/ControlThread.h"
#include "platform/linux/midi/EndpointNames.h"
#include "platform/linux/midi/PortPairing.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel {

class JackClient;
class Wakeup;

// The MIDI services over JACK. A JACK client with MIDI ports is a device; its k-th output port (a
// source) and its k-th input port (a destination) form its k-th entity. Only one client can be open
// at a time. JACK's callbacks store packets and news and raise a descriptor. The main loop watches
// the descriptor and then calls the read and notify callbacks. JACK_DEFAULT_SERVER names the
// server; this class never starts one.
class JackMIDIServices final : public MIDIServices {
public:
    // How long one operation waits for a server that does not answer. Opening, closing and
    // connecting take two periods of the server: 350 ms with 8,192 frames, the longest in use.
    static constexpr std::chrono::milliseconds Patience { 500 };

    // `mainLoop` outlives the services.
    explicit JackMIDIServices(MainLoop& mainLoop, std::chrono::milliseconds patience = Patience);
    ~JackMIDIServices() override;

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
    // JACK always tells when a source goes.
    [[nodiscard]] bool answersFor(MIDIEndpoint, std::int32_t) override { return true; }
    [[nodiscard]] bool send(
        MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet) override;
    void setPacketsLost(std::function<void()> packetsLost) override
    {
        m_packetsLost = std::move(packetsLost);
    }
    // True while an operation that was given up has not ended. No other operation succeeds then.
    [[nodiscard]] bool isUnanswered() const { return m_control.isBehind(); }

private:
    struct InputPort;
    struct OutputPort;

    [[nodiscard]] bool ask(std::function<bool()> question, ControlThread::Job undo = {});
    [[nodiscard]] bool reservePort(
        MIDIClient client, const std::string& name, PortDirection direction);
    void deliver(unsigned moreNews);
    void deliverPackets();
    void deliverNews(const std::shared_ptr<JackClient>& client, unsigned news);

    const std::chrono::milliseconds m_patience;
    const std::shared_ptr<Wakeup> m_wakeup;
    ControlThread m_control;
    std::shared_ptr<JackClient> m_client; // null when no client is open
    std::uint32_t m_clientRef = 0;
    std::uint32_t m_lastRef = 0;
    std::function<void()> m_packetsLost = [] {};
    bool m_answerMissed = false; // whether an operation has timed out since the client was created
    std::vector<std::shared_ptr<InputPort>> m_inputs;
    std::vector<std::shared_ptr<OutputPort>> m_outputs;
    EndpointNames m_endpoints;
    std::set<std::string> m_familiarClients; // those with a source that was asked for
    ChangeTeller m_changes;
    std::unique_ptr<MainLoop::Watch> m_watch;
};

} // namespace kestrel
