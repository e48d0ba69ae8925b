#include "tools/zenta-console/ConsoleProtocol.h"

#include <algorithm>
#include <array>

namespace kestrel::console {

namespace {
constexpr std::uint8_t Controller = 0xB0; // on channel 1
constexpr std::uint8_t SelectLampZone = 0x0C;
constexpr std::uint8_t LampZone = 0x1C;
constexpr std::uint8_t LampPort = 0x2C;
constexpr std::uint8_t LampIsOn = 0x40;
constexpr std::uint8_t SelectUserButtons = 0x0F;
constexpr std::uint8_t UserButtons = 0x40;
constexpr std::uint8_t UserButtonPort = 0x2F;
constexpr std::uint8_t ButtonIsDown = 64;
constexpr std::uint8_t FirstKnobController = 0x18;
} // namespace

Bytes heartbeat()
{
    return { 0x90, 0x00, 0x00 };
}

Bytes heartbeatAnswer()
{
    return { 0x90, 0x00, 0x7F };
}

std::vector<Bytes> userButton(int button, Motion motion)
{
    auto code = static_cast<std::uint8_t>(button - FirstButton);
    if (motion == Motion::Press)
        code |= ButtonIsDown;
    return { { Controller, SelectUserButtons, UserButtons }, { Controller, UserButtonPort, code } };
}

std::vector<Bytes> lampMessage(int lamp, Lamp state)
{
    auto port = static_cast<std::uint8_t>(lamp);
    if (state == Lamp::On)
        port |= LampIsOn;
    return { { Controller, SelectLampZone, LampZone }, { Controller, LampPort, port } };
}

Bytes displayText(int zone, std::string_view text)
{
    constexpr std::array<std::uint8_t, 7> Header { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12 };
    Bytes message(Header.size() + 1 + CharactersPerZone + 1, ' ');
    auto next = std::copy(Header.begin(), Header.end(), message.begin());
    *next++ = static_cast<std::uint8_t>(zone);
    std::copy_n(text.begin(), std::min(text.size(), CharactersPerZone), next);
    message.back() = 0xF7;
    return message;
}

Bytes knobPosition(int knob, std::uint8_t value)
{
    return { Controller, static_cast<std::uint8_t>(FirstKnobController + knob - FirstKnob), value };
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
