#pragma once

#include "link/Clock.h"
#include "link/MIDIMessage.h"
#include "platform/MIDIServices.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kestrel {

class ConsoleDisplay;
class MainLoop;
class ProcessTable;
class StatusItem;

// The link to the console's MIDI driver: it is opened while the workstation runs, answers the
// heartbeat, and knows whether the console is alive. Main thread only.
class MIDIConnection {
public:
    using Receiver = std::function<void(const MIDIMessage&)>;

    // What the link stands on; all of it outlives the connection.
    struct Surroundings {
        MIDIServices& midiServices;
        ProcessTable& processTable;
        MainLoop& mainLoop;
        const Clock& clock;
    };

    // `receiveMessage` gets every packet, in order of arrival.
    MIDIConnection(const Surroundings& surroundings, Receiver receiveMessage);
    MIDIConnection(const MIDIConnection&) = delete;
    MIDIConnection& operator=(const MIDIConnection&) = delete;

    // Called when the console can no longer be relied on to release what it has pressed: the link
    // went offline or is taken down.
    void setLinkLost(std::function<void()> linkLost) { m_linkLost = std::move(linkLost); }
    // Both outlive the connection; without them nothing is shown.
    void setStatusItem(StatusItem* statusItem) { m_statusItem = statusItem; }
    void setMyWindowController(ConsoleDisplay* display) { m_myWindowController = display; }

    // Builds the whole link, after taking down what there was of it.
    void reconnectAllSources();
    void releaseMIDIReceiver();
    // The supervision, to be called every five seconds.
    void checkActiveSence();
    // Clears the display and switches off lamps and knobs.
    void sendOffLineMessage();
    // True when a process runs whose command name is exactly the workstation's.
    [[nodiscard]] bool isProTools() const;
    // The console has sent its heartbeat: answers it and shows the link as online.
    void answerHeartbeat();
    // The hook for a debug log; nothing is kept.
    void addLogLine(std::string_view line);

    [[nodiscard]] MIDIClient client() const { return m_client; } // 0 = no link is open
    [[nodiscard]] MIDIEndpoint inputEndPointRef() const { return m_inputEndPointRef; } // 0 = none
    [[nodiscard]] bool imageOnline() const { return m_imageOnline; }

    // For the callbacks below.
    void receiveMessage(const MIDIMessage& message) const { m_receiveMessage(message); }
    [[nodiscard]] MainLoop& mainLoop() const { return m_mainLoop; }

private:
    void connectFirstConsole();
    [[nodiscard]] bool connectFirstSource(const MIDIEntity& entity);

    MIDIServices& m_midiServices;
    ProcessTable& m_processTable;
    MainLoop& m_mainLoop;
    const Clock& m_clock;
    Receiver m_receiveMessage;
    std::function<void()> m_linkLost = [] {};
    StatusItem* m_statusItem = nullptr;
    ConsoleDisplay* m_myWindowController = nullptr;

    MIDIClient m_client = 0;
    MIDIPort m_inputPort = 0; // 0 = the service refused it
    MIDIPort m_outputPort = 0; // likewise
    MIDIEndpoint m_inputEndPointRef = 0;
    MIDIEndpoint m_destPointRef = 0; // kept when the link is taken down
    std::array<std::int32_t, 256> m_idArray {}; // [0]: unique ID of the connected source
    std::optional<Clock::TimePoint> m_activeDate; // last heartbeat
    bool m_imageOnline = false;
};

// The input port's read callback: each packet becomes one message. `readProcRefCon` is the
// connection, `srcConnRefCon` points to the source's unique ID.
void MyMIDIReadProc(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon);

// The client's notification callback. `refCon` is the connection.
void MyMIDIStateChangedHander(const MIDINotification& notification, void* refCon);

} // namespace kestrel
