#include "link/MIDIConnection.h"

#include "link/ConsoleDevice.h"
#include "link/ConsoleDisplay.h"
#include "link/ConsoleProtocol.h"
#include "link/StatusItem.h"
#include "platform/MainLoop.h"
#include "platform/ProcessTable.h"
#include "platform/Workstation.h"

#include <algorithm>
#include <chrono>

namespace kestrel {

namespace {
// ConsoleDevice::Model and its fifth entity, in words
constexpr std::string_view ConsoleName = "ZENTA, port 5";
constexpr std::chrono::seconds HeartbeatTimeout { 5 };

// Makes a display message that clears one zone. The byte after the header is the zone's number.
using ZoneMessage = std::array<std::uint8_t,
    ConsoleProtocol::DisplayHeader.size() + 1 + ConsoleProtocol::ZoneCharacters + 1>;
ZoneMessage blankZone(std::uint8_t zone)
{
    ZoneMessage message;
    message.fill(' ');
    const auto& header = ConsoleProtocol::DisplayHeader;
    *std::copy(header.begin(), header.end(), message.begin()) = zone;
    message.back() = ConsoleProtocol::EndOfExclusive;
    return message;
}
} // namespace

MIDIConnection::MIDIConnection(const Surroundings& surroundings, Receiver receiveMessage)
    : m_midiServices(surroundings.midiServices)
    , m_processTable(surroundings.processTable)
    , m_mainLoop(surroundings.mainLoop)
    , m_clock(surroundings.clock)
    , m_receiveMessage(std::move(receiveMessage))
{
    m_midiServices.setPacketsLost([this] { packetsLost(); });
}

MIDIConnection::~MIDIConnection()
{
    m_midiServices.setPacketsLost({});
}

void MIDIConnection::reconnectAllSources()
{
    if (m_client != 0)
        releaseMIDIReceiver();
    m_consolePairs = 0;

    const auto client
        = m_midiServices.createClient("inputMIDIReceiver Client", MyMIDIStateChangedHander, this);
    if (!client)
        return tell(LinkEvent::NoMIDIService);
    m_client = *client;
    m_outputPort
        = m_midiServices.createOutputPort(m_client, "OutputMIDIReceiver Output Port").value_or(0);
    m_inputPort
        = m_midiServices
              .createInputPort(m_client, "inputMIDIReceiver Input Port", MyMIDIReadProc, this)
              .value_or(0);
    if (m_inputPort == 0)
        return tell(LinkEvent::NoMIDIService);
    if (connectFirstConsole())
        tell(LinkEvent::Opened, ConsoleName);
    else
        tell(LinkEvent::NoConsole);
}

bool MIDIConnection::connectFirstConsole()
{
    for (const MIDIDevice& device : m_midiServices.devices()) {
        if (device.model != ConsoleDevice::Model)
            continue;
        m_consolePairs = std::max(m_consolePairs, device.entities.size());
        if (device.entities.size() <= ConsoleDevice::ControlSurfaceEntity)
            continue;
        const MIDIEntity& entity = device.entities[ConsoleDevice::ControlSurfaceEntity];
        if (m_outputPort != 0 && !entity.destinations.empty())
            m_destPointRef = entity.destinations.front();
        if (connectFirstSource(entity))
            return true;
    }
    return false;
}

bool MIDIConnection::connectFirstSource(const MIDIEntity& entity)
{
    if (entity.sources.empty())
        return false;
    const MIDISource& source = entity.sources.front();
    if (!source.uniqueID)
        return false;
    m_idArray[0] = *source.uniqueID;
    if (!m_midiServices.connectSource(m_inputPort, source.endpoint, &m_idArray[0]))
        return false;
    m_inputEndPointRef = source.endpoint;
    return true;
}

void MIDIConnection::releaseMIDIReceiver()
{
    m_releasesLost();
    m_midiServices.disposePort(m_outputPort);
    m_midiServices.disposePort(m_inputPort);
    m_midiServices.disposeClient(m_client);
    m_client = 0;
    m_outputPort = 0;
    m_inputPort = 0;
    m_inputEndPointRef = 0;
}

void MIDIConnection::checkActiveSence()
{
    if (!m_activeDate) {
        m_activeDate = m_clock.now();
        return;
    }
    const bool workstationRuns = isProTools();
    const bool consoleSilent = m_clock.now() - *m_activeDate > HeartbeatTimeout;
    tell(workstationRuns ? LinkEvent::WorkstationRuns : LinkEvent::WorkstationMissing);
    if (consoleSilent && m_inputEndPointRef != 0)
        tell(LinkEvent::ConsoleSilent);
    if ((!workstationRuns || consoleSilent) && m_imageOnline)
        goOffline();
    if (!workstationRuns)
        return;
    if (m_client == 0)
        reconnectAllSources();
    else if (hasLostItsSource())
        sourceChanged("the console's MIDI source no longer answers");
}

void MIDIConnection::goOffline()
{
    if (m_statusItem)
        m_statusItem->setImage(StatusImage::Offline);
    sendOffLineMessage();
    m_imageOnline = false;
    m_releasesLost();
}

void MIDIConnection::sourceChanged(std::string_view what)
{
    tell(LinkEvent::Rebuilt, what);
    reconnectAllSources();
}

void MIDIConnection::packetsLost()
{
    tell(LinkEvent::PacketsLost);
    m_releasesLost();
}

void MIDIConnection::tell(LinkEvent event, std::string_view detail) const
{
    if (m_listener)
        m_listener->linkChanged(event, detail);
}

// While the console is online its source is certainly there.
bool MIDIConnection::hasLostItsSource() const
{
    return !m_imageOnline && m_inputEndPointRef != 0
        && !m_midiServices.answersFor(m_inputEndPointRef, m_idArray[0]);
}

void MIDIConnection::sendOffLineMessage()
{
    if (!m_myWindowController)
        return;
    MIDIMessage message;

    using namespace ConsoleProtocol;
    for (Byte zone = 0; zone < Zones; ++zone) {
        message.setReadData(blankZone(zone));
        m_myWindowController->redrawLCDdisplay(message);
    }
    for (Byte lamp = 0; lamp < Lamps; ++lamp) {
        message.setReadData(
            std::array<Byte, 5> { ControlChange, LampZoneSelect, LampZone, LampPort, lamp });
        m_myWindowController->redrawDSParea(message);
    }
    for (Byte knob = 0; knob < Knobs; ++knob) {
        const auto controller = static_cast<Byte>(FirstKnobLow + knob);
        message.setReadData(std::array<Byte, 3> { ControlChange, controller, 0x00 });
        m_myWindowController->redrawDSParea(message);
    }
}

bool MIDIConnection::isProTools() const
{
    return m_processTable.isRunning(Workstation::Name);
}

bool MIDIConnection::answerHeartbeat()
{
    m_activeDate = m_clock.now();

    // A failure needs no handling here: the console's next heartbeat gets an answer of its own.
    const bool sent = m_midiServices.send(
        m_outputPort, m_destPointRef, { 0, ConsoleProtocol::HeartbeatAnswer });

    if (!m_imageOnline) {
        if (m_statusItem)
            m_statusItem->setImage(StatusImage::Online);
        m_imageOnline = true;
    }
    return sent;
}

void MIDIConnection::addLogLine(std::string_view) { }

void MyMIDIReadProc(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon)
{
    const auto& connection = *static_cast<const MIDIConnection*>(readProcRefCon);
    const std::int32_t sourceID = *static_cast<const std::int32_t*>(srcConnRefCon);
    while (const auto packet = packets.next()) {
        MIDIMessage message(sourceID);
        message.readPacket(*packet, static_cast<std::uint32_t>(packet->data.size()));
        connection.receiveMessage(message);
    }
}

void MyMIDIStateChangedHander(const MIDINotification& notification, void* refCon)
{
    const bool addedOrRemoved = notification.messageID == MIDINotification::ObjectAdded
        || notification.messageID == MIDINotification::ObjectRemoved;
    if (!addedOrRemoved || notification.childType != MIDINotification::Source)
        return;
    auto* connection = static_cast<MIDIConnection*>(refCon);
    MainLoop& mainLoop = connection->mainLoop();
    mainLoop.perform(
        [connection] { connection->addLogLine("Changes to MIDI state were detected"); });
    const std::string_view what = notification.messageID == MIDINotification::ObjectAdded
        ? "a MIDI source has appeared"
        : "a MIDI source has disappeared";
    mainLoop.perform([connection, what] { connection->sourceChanged(what); });
}

} // namespace kestrel
