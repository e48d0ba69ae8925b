#include "activity/PacketWords.h"

#include "link/ConsoleProtocol.h"

#include <array>
#include <optional>
#include <string_view>

namespace kestrel {

namespace {
using namespace ConsoleProtocol;
using Packet = std::span<const std::uint8_t>;

constexpr std::size_t RecordSize = 1 + ZoneCharacters; // the zone and its characters

constexpr std::array<std::string_view, Lamps> LampNames { "INSERT/PARAM", "ASSIGN", "SELECT 1",
    "SELECT 2", "SELECT 3", "SELECT 4", "BYPASS", "COMPARE" };

std::string keyWords(Byte code)
{
    const Byte key = code & static_cast<Byte>(~KeyPressed);
    return "Key " + std::to_string(key + 1) + (code & KeyPressed ? " pressed" : " released");
}

std::string lampWords(Byte code)
{
    const Byte lamp = code & static_cast<Byte>(~LampLit);
    const std::string name
        = lamp < Lamps ? std::string(LampNames[lamp]) : "number " + std::to_string(lamp);
    return "Lamp " + name + (code & LampLit ? " on" : " off");
}

std::string_view modeWords(Byte value)
{
    switch (value & Ring::ModeBits) {
    case Ring::OneLamp:
        return "alone";
    case Ring::FromMiddle:
        return "from the middle";
    case Ring::FromFirst:
        return "from the left";
    default:
        return "to both sides";
    }
}

std::string knobWords(Byte controller, Byte value)
{
    const Byte position = value & Ring::PositionBits;
    std::string words = "Knob " + std::to_string((controller & KnobMask) + 1) + ": ";
    if (position == 0)
        words += "dark";
    else
        words.append(std::to_string(position))
            .append(" of ")
            .append(std::to_string(Ring::Lamps))
            .append(", ")
            .append(modeWords(value));
    return value & Ring::LowerLamp ? words + ", lower lamp on" : words;
}

// The display has pictures for some codes that are no ASCII characters; here they are dots.
std::string zoneText(Packet characters)
{
    std::string text;
    for (const Byte code : characters) {
        if (code < 0x10)
            text += ' ';
        else
            text += code >= 0x20 && code < 0x7F ? std::string(1, static_cast<char>(code)) : "·";
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string displayWords(Packet packet)
{
    std::string words;
    packet = packet.subspan(DisplayHeader.size());
    for (; packet.size() >= RecordSize; packet = packet.subspan(RecordSize)) {
        words += words.empty() ? "Display zone " : ", zone ";
        words += std::to_string(packet[0]) + ": " + zoneText(packet.subspan(1, ZoneCharacters));
    }
    return words.empty() ? "Display, without a text" : words;
}

std::string controllerWords(Packet packet)
{
    const Byte controller = packet[1];
    const Byte value = packet[2];
    if (controller == KeyPort)
        return keyWords(value);
    if (controller == LampPort)
        return lampWords(value);
    if (controller == KeyZoneSelect && value == KeyZone)
        return packet.size() > 4 ? keyWords(packet[4]) : "Key follows";
    if (controller == LampZoneSelect && value == LampZone)
        return packet.size() > 4 ? lampWords(packet[4]) : "Lamp follows";
    if ((controller & ~KnobMask) == FirstKnob)
        return knobWords(controller, value);
    return "Unknown packet";
}

std::string packetWords(Packet packet)
{
    if (packet.size() < Heartbeat.size())
        return "Unknown packet";
    switch (packet[0]) {
    case NoteOn:
        return packet[1] == Heartbeat[1] && packet[2] == Heartbeat[2] ? "Heartbeat"
                                                                      : "Unknown packet";
    case SystemExclusive:
        return packet.size() > DisplayCommandAt && packet[DisplayCommandAt] == DisplayCommand
            ? displayWords(packet)
            : "Unknown packet";
    case ControlChange:
        return controllerWords(packet);
    default:
        return "Unknown packet";
    }
}
} // namespace

std::string PacketWords::describe(const ActivityEvent& event)
{
    using Kind = ActivityEvent::Kind;
    switch (event.kind()) {
    case Kind::Packet:
        return packetWords(event.bytes());
    case Kind::LinkOpened:
        return "Link opened: " + std::string(event.text());
    case Kind::LinkRebuilt:
        return "Link built anew: " + std::string(event.text());
    case Kind::NoConsole:
        return "No console found";
    case Kind::NoMIDIService:
        return "The MIDI service does not answer";
    case Kind::WorkstationMissing:
        return "Pro Tools is not running";
    case Kind::WorkstationFound:
        return "Pro Tools is running";
    case Kind::ConsoleSilent:
        return "No heartbeat for 5 seconds";
    case Kind::PacketsLost:
        return "Packets may have been lost";
    }
    return {};
}

bool PacketWords::selectsZone(std::span<const std::uint8_t> packet)
{
    if (packet.size() < 3 || packet.size() > 4 || packet[0] != ControlChange)
        return false;
    return (packet[1] == KeyZoneSelect && packet[2] == KeyZone)
        || (packet[1] == LampZoneSelect && packet[2] == LampZone);
}

bool PacketWords::isKeyPress(const ActivityEvent& event)
{
    const Packet packet = event.bytes();
    if (event.kind() != ActivityEvent::Kind::Packet || packet.size() < 3
        || packet[0] != ControlChange)
        return false;
    if (packet[1] == KeyPort)
        return packet[2] & KeyPressed;
    return packet[1] == KeyZoneSelect && packet[2] == KeyZone && packet.size() > 4
        && packet[4] & KeyPressed;
}

std::string PacketWords::hexadecimal(const ActivityEvent& event)
{
    static constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text;
    for (const Byte byte : event.bytes()) {
        if (!text.empty())
            text += ' ';
        text += Digits[byte >> 4];
        text += Digits[byte & 0x0F];
    }
    if (event.packetSize() > event.bytes().size())
        text += " …";
    return text;
}

} // namespace kestrel
