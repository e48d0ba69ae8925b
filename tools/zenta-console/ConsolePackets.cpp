#include "tools/zenta-console/ConsolePackets.h"

#include <algorithm>

namespace kestrel::console {

Bytes heartbeat()
{
    return { ConsoleProtocol::Heartbeat.begin(), ConsoleProtocol::Heartbeat.end() };
}

Bytes heartbeatAnswer()
{
    return { ConsoleProtocol::HeartbeatAnswer.begin(), ConsoleProtocol::HeartbeatAnswer.end() };
}

std::vector<Bytes> userButton(int button, Motion motion)
{
    using namespace ConsoleProtocol;
    auto key = static_cast<Byte>(button - FirstButton);
    if (motion == Motion::Press)
        key |= KeyPressed;
    return { { ControlChange, KeyZoneSelect, KeyZone }, { ControlChange, KeyPort, key } };
}

std::vector<Bytes> lampMessage(int lamp, Lamp state)
{
    using namespace ConsoleProtocol;
    auto port = static_cast<Byte>(lamp);
    if (state == Lamp::On)
        port |= LampLit;
    return { { ControlChange, LampZoneSelect, LampZone }, { ControlChange, LampPort, port } };
}

Bytes displayText(int zone, std::string_view text)
{
    using namespace ConsoleProtocol;
    Bytes message(DisplayHeader.size() + 1 + ZoneCharacters + 1, ' ');
    auto next = std::copy(DisplayHeader.begin(), DisplayHeader.end(), message.begin());
    *next++ = static_cast<Byte>(zone);
    std::copy_n(text.begin(), std::min(text.size(), ZoneCharacters), next);
    message.back() = EndOfExclusive;
    return message;
}

Bytes knobPosition(int knob, std::uint8_t value)
{
    const auto controller
        = static_cast<std::uint8_t>(ConsoleProtocol::FirstKnob + knob - FirstKnob);
    return { ConsoleProtocol::ControlChange, controller, value };
}

std::string hexText(std::span<const std::uint8_t> bytes)
{
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty())
            text += ' ';
        text += Digits[byte >> 4];
        text += Digits[byte & 0x0F];
    }
    return text;
}

} // namespace kestrel::console
