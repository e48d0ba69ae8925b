#pragma once

#include "link/Clock.h"
#include "link/LinkListener.h"
#include "link/MIDIMessage.h"
#include "platform/MIDIServices.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kestrel {

class ConsoleDisplay;
class MainLoop;
class ProcessTable;
class StatusItem;

// The link to the console's MIDI driver. It is opened once the workstation runs, answers the
// heartbeat, and knows whether the console is alive. Main thread only.
class MIDIConnection {
public:
    using Receiver = std::function<void(const MIDIMessage&)>;

    // The services that the connection uses. All of them outlive the connection.
    struct Surroundings {
        MIDIServices& midiServices;
        ProcessTable& processTable;
        MainLoop& mainLoop;
        const Clock& clock;
    };

    // `receiveMessage` gets every packet, in order of arrival.
    MIDIConnection(const Surroundings& surroundings, Receiver receiveMessage);
    ~MIDIConnection();
    MIDIConnection(const MIDIConnection&) = delete;
    MIDIConnection& operator=(const MIDIConnection&) = delete;

    // `lost` is called when the console cannot be relied on to release the keys that it has
    // pressed: the link goes offline or is taken down, or packets may have been lost.
    void setReleasesLost(std::function<void()> lost) { m_releasesLost = std::move(lost); }
    // Outlives the connection.
    void setListener(LinkListener* listener) { m_listener = listener; }
    // The status item and the display outlive the connection. Without them nothing is shown.
    void setStatusItem(StatusItem* statusItem) { m_statusItem = statusItem; }
    void setMyWindowController(ConsoleDisplay* display) { m_myWindowController = display; }

    // Builds the whole link. An existing link is taken down first.
    void reconnectAllSources();
    void releaseMIDIReceiver();
    // Supervises the link. A timer calls it every five seconds.
    void checkActiveSence();
    // Clears the display and switches off lamps and knobs.
    void sendOffLineMessage();
    // True when a process with exactly the workstation's command name runs.
    [[nodiscard]] bool isProTools() const;
    // Answers a heartbeat that the console has sent, and shows the link as online. False when it is
    // certain that the answer is not sent.
    bool answerHeartbeat();
    // A hook for a debug log. At present it keeps nothing.
    void addLogLine(std::string_view line);

    [[nodiscard]] MIDIClient client() const { return m_client; } // 0 = no link is open
    // 0 = no source is connected.
    [[nodiscard]] MIDIEndpoint inputEndPointRef() const { return m_inputEndPointRef; }
    [[nodiscard]] bool imageOnline() const { return m_imageOnline; }
    // The number of the console's entities when the link was last built; 0 if there was no console.
    [[nodiscard]] std::size_t consolePairs() const { return m_consolePairs; }

    // The two callbacks below use these functions.
    void receiveMessage(const MIDIMessage& message) const { m_receiveMessage(message); }
    // Builds the link again because of `what`.
    void sourceChanged(std::string_view what);
    [[nodiscard]] MainLoop& mainLoop() const { return m_mainLoop; }

private:
    [[nodiscard]] bool connectFirstConsole();
    [[nodiscard]] bool connectFirstSource(const MIDIEntity& entity);
    [[nodiscard]] bool hasLostItsSource() const;
    void goOffline();
    void packetsLost();
    void tell(LinkEvent event, std::string_view detail = {}) const;

    MIDIServices& m_midiServices;
    ProcessTable& m_processTable;
    MainLoop& m_mainLoop;
    const Clock& m_clock;
    Receiver m_receiveMessage;
    std::function<void()> m_releasesLost = [] {};
    LinkListener* m_listener = nullptr;
    StatusItem* m_statusItem = nullptr;
    ConsoleDisplay* m_myWindowController = nullptr;

    MIDIClient m_client = 0;
    MIDIPort m_inputPort = 0; // 0 = the service refused it
    MIDIPort m_outputPort = 0; // 0 = the service refused it
    MIDIEndpoint m_inputEndPointRef = 0;
    MIDIEndpoint m_destPointRef = 0; // stays set when the link is taken down
    // Element 0 is the unique ID of the connected source.
    std::array<std::int32_t, 256> m_idArray {};
    // The time of the last heartbeat or of the first check.
    std::optional<Clock::TimePoint> m_activeDate;
    bool m_imageOnline = false;
    std::size_t m_consolePairs = 0;
};

// The input port's read callback: each packet becomes one message. `readProcRefCon` is the
// connection, `srcConnRefCon` points to the source's unique ID.
void MyMIDIReadProc(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon);

// The client's notification callback. `refCon` is the connection.
void MyMIDIStateChangedHander(const MIDINotification& notification, void* refCon);

} // namespace kestrel
