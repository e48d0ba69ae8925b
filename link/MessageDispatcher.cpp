#include "link/MessageDispatcher.h"

#include "link/ConsoleProtocol.h"
#include "link/MIDIMessage.h"

#include <utility>

namespace kestrel {

namespace {
using namespace ConsoleProtocol;

// A packet with more bytes than this carries the port controller after the zone controller.
constexpr std::size_t ZoneAlone = 4;
} // namespace

void MessageDispatcher::receiveMessage(const MIDIMessage& message)
{
    const auto bytes = message.readData();
    if (bytes.size() < 3)
        return;
    switch (bytes[0]) {
    case NoteOn:
        if (bytes[1] == Heartbeat[1] && bytes[2] == Heartbeat[2])
            m_destinations.answerHeartbeat();
        break;
    case SystemExclusive:
        if (bytes.size() > DisplayCommandAt && bytes[DisplayCommandAt] == DisplayCommand)
            m_destinations.redrawLCDdisplay(message);
        break;
    case ControlChange:
        receiveController(message);
        break;
    default:
        break;
    }
}

void MessageDispatcher::receiveController(const MIDIMessage& message)
{
    const auto bytes = message.readData();
    const bool portFollows = bytes.size() > ZoneAlone;
    switch (const std::uint8_t controller = bytes[1]) {
    case LampPort:
        if (std::exchange(m_switchLEDCmnd, false))
            m_destinations.redrawDSParea(message);
        break;
    case KeyPort:
        if (std::exchange(m_userAssignCmnd, false))
            m_destinations.eventKeyPost(bytes[2]);
        break;
    case LampZoneSelect:
        if (bytes[2] != LampZone)
            break;
        if (portFollows)
            m_destinations.redrawDSParea(message);
        else
            m_switchLEDCmnd = true;
        break;
    case KeyZoneSelect:
        if (bytes[2] != KeyZone)
            break;
        if (portFollows)
            m_destinations.eventKeyPost(bytes[4]);
        else
            m_userAssignCmnd = true;
        break;
    default:
        if ((controller & ~KnobMask) == FirstKnob)
            m_destinations.redrawDSParea(message);
        break;
    }
}

} // namespace kestrel
