#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

// The messages of the console, byte for byte.
namespace kestrel::test::PanelMessages {

using Bytes = std::vector<std::uint8_t>;
using Record = std::pair<std::uint8_t, std::string_view>; // zone number, ten characters

inline Bytes display(std::initializer_list<Record> records)
{
    Bytes bytes { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12 };
    bytes.reserve(bytes.size() + records.size() * 11 + 1);
    for (const auto& [zone, characters] : records) {
        bytes.push_back(zone);
        bytes.insert(bytes.end(), characters.begin(), characters.end());
    }
    bytes.push_back(0xF7);
    return bytes;
}

inline Bytes knob(std::uint8_t number, std::uint8_t value)
{
    return { 0xB0, static_cast<std::uint8_t>(0x18 + number), value };
}

inline Bytes lamp(std::uint8_t number, bool lit)
{
    return { 0xB0, 0x0C, 0x1C, 0x2C, static_cast<std::uint8_t>(lit ? number + 0x40 : number) };
}

// The messages that clear the panel when the console falls silent: spaces in all zones, lamps and
// knobs at rest.
inline std::vector<Bytes> silence()
{
    std::vector<Bytes> messages;
    for (std::uint8_t zone = 0; zone < 10; ++zone)
        messages.push_back(display({ { zone, "          " } }));
    for (std::uint8_t number = 0; number < 8; ++number)
        messages.push_back(lamp(number, false));
    for (std::uint8_t controller = 0x08; controller < 0x0C; ++controller)
        messages.push_back({ 0xB0, controller, 0x00 });
    return messages;
}

} // namespace kestrel::test::PanelMessages
