#include "link/MessageDispatcher.h"

#include "link/MIDIMessage.h"

#include <utility>

namespace kestrel {

namespace {
enum Status : std::uint8_t { NoteOn = 0x90, ControlChange = 0xB0, SystemExclusive = 0xF0 };

enum Controller : std::int8_t {
    SwitchZone = 0x0C,
    UserAssignZone = 0x0F,
    KnobRing = 0x18, // to 0x1B, one a knob
    SwitchPort = 0x2C,
    UserAssignPort = 0x2F,
};

constexpr std::uint8_t PlugInSwitches = 0x1C; // zone
constexpr std::uint8_t UserAssignKeys = 0x40; // zone
constexpr std::uint8_t LargeDisplay = 0x12; // system-exclusive command, seventh byte

// With more than this the port controller follows its zone in the same packet.
constexpr std::size_t ZoneAlone = 4;
} // namespace

void MessageDispatcher::receiveMessage(const MIDIMessage& message)
{
    const auto bytes = message.readData();
    if (bytes.size() < 3)
        return;
    switch (bytes[0]) {
    case NoteOn:
        if (bytes[1] == 0 && bytes[2] == 0)
            m_destinations.answerHeartbeat();
        break;
    case SystemExclusive:
        if (bytes.size() > 6 && bytes[6] == LargeDisplay)
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
    // Signed: what is no data byte is no controller either.
    switch (const auto controller = static_cast<std::int8_t>(bytes[1])) {
    case SwitchPort:
        if (std::exchange(m_switchLEDCmnd, false))
            m_destinations.redrawDSParea(message);
        break;
    case UserAssignPort:
        if (std::exchange(m_userAssignCmnd, false))
            m_destinations.eventKeyPost(bytes[2]);
        break;
    case SwitchZone:
        if (bytes[2] != PlugInSwitches)
            break;
        if (portFollows)
            m_destinations.redrawDSParea(message);
        else
            m_switchLEDCmnd = true;
        break;
    case UserAssignZone:
        if (bytes[2] != UserAssignKeys)
            break;
        if (portFollows)
            m_destinations.eventKeyPost(bytes[4]);
        else
            m_userAssignCmnd = true;
        break;
    default:
        if ((controller & ~0x03) == KnobRing)
            m_destinations.redrawDSParea(message);
        break;
    }
}

} // namespace kestrel
