#include "platform/linux/x11/EvdevKeyMap.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace kestrel::EvdevKeyMap {

namespace {
// Code 0x0A is the key that only ISO keyboards have; 0x32 is the key left of "1" on an ANSI
// keyboard. An Apple ISO keyboard reports the two the other way round, but its Linux driver swaps
// them back, and PC keyboards report them correctly. So this table does not swap them. The keypad's
// Clear is in the place of Num Lock, and Help in the place of Insert.
constexpr std::array Table {
    Pair { 0x00, KEY_A },
    Pair { 0x01, KEY_S },
    Pair { 0x02, KEY_D },
    Pair { 0x03, KEY_F },
    Pair { 0x04, KEY_H },
    Pair { 0x05, KEY_G },
    Pair { 0x06, KEY_Z },
    Pair { 0x07, KEY_X },
    Pair { 0x08, KEY_C },
    Pair { 0x09, KEY_V },
    Pair { 0x0A, KEY_102ND },
    Pair { 0x0B, KEY_B },
    Pair { 0x0C, KEY_Q },
    Pair { 0x0D, KEY_W },
    Pair { 0x0E, KEY_E },
    Pair { 0x0F, KEY_R },
    Pair { 0x10, KEY_Y },
    Pair { 0x11, KEY_T },
    Pair { 0x12, KEY_1 },
    Pair { 0x13, KEY_2 },
    Pair { 0x14, KEY_3 },
    Pair { 0x15, KEY_4 },
    Pair { 0x16, KEY_6 },
    Pair { 0x17, KEY_5 },
    Pair { 0x18, KEY_EQUAL },
    Pair { 0x19, KEY_9 },
    Pair { 0x1A, KEY_7 },
    Pair { 0x1B, KEY_MINUS },
    Pair { 0x1C, KEY_8 },
    Pair { 0x1D, KEY_0 },
    Pair { 0x1E, KEY_RIGHTBRACE },
    Pair { 0x1F, KEY_O },
    Pair { 0x20, KEY_U },
    Pair { 0x21, KEY_LEFTBRACE },
    Pair { 0x22, KEY_I },
    Pair { 0x23, KEY_P },
    Pair { 0x24, KEY_ENTER },
    Pair { 0x25, KEY_L },
    Pair { 0x26, KEY_J },
    Pair { 0x27, KEY_APOSTROPHE },
    Pair { 0x28, KEY_K },
    Pair { 0x29, KEY_SEMICOLON },
    Pair { 0x2A, KEY_BACKSLASH },
    Pair { 0x2B, KEY_COMMA },
    Pair { 0x2C, KEY_SLASH },
    Pair { 0x2D, KEY_N },
    Pair { 0x2E, KEY_M },
    Pair { 0x2F, KEY_DOT },
    Pair { 0x30, KEY_TAB },
    Pair { 0x31, KEY_SPACE },
    Pair { 0x32, KEY_GRAVE },
    Pair { 0x33, KEY_BACKSPACE },
    Pair { 0x35, KEY_ESC },
    Pair { 0x36, KEY_RIGHTMETA },
    Pair { 0x37, KEY_LEFTMETA },
    Pair { 0x38, KEY_LEFTSHIFT },
    Pair { 0x39, KEY_CAPSLOCK },
    Pair { 0x3A, KEY_LEFTALT },
    Pair { 0x3B, KEY_LEFTCTRL },
    Pair { 0x3C, KEY_RIGHTSHIFT },
    Pair { 0x3D, KEY_RIGHTALT },
    Pair { 0x3E, KEY_RIGHTCTRL },
    Pair { 0x3F, KEY_FN },
    Pair { 0x40, KEY_F17 },
    Pair { 0x41, KEY_KPDOT },
    Pair { 0x43, KEY_KPASTERISK },
    Pair { 0x45, KEY_KPPLUS },
    Pair { 0x47, KEY_NUMLOCK },
    Pair { 0x48, KEY_VOLUMEUP },
    Pair { 0x49, KEY_VOLUMEDOWN },
    Pair { 0x4A, KEY_MUTE },
    Pair { 0x4B, KEY_KPSLASH },
    Pair { 0x4C, KEY_KPENTER },
    Pair { 0x4E, KEY_KPMINUS },
    Pair { 0x4F, KEY_F18 },
    Pair { 0x50, KEY_F19 },
    Pair { 0x51, KEY_KPEQUAL },
    Pair { 0x52, KEY_KP0 },
    Pair { 0x53, KEY_KP1 },
    Pair { 0x54, KEY_KP2 },
    Pair { 0x55, KEY_KP3 },
    Pair { 0x56, KEY_KP4 },
    Pair { 0x57, KEY_KP5 },
    Pair { 0x58, KEY_KP6 },
    Pair { 0x59, KEY_KP7 },
    Pair { 0x5A, KEY_F20 },
    Pair { 0x5B, KEY_KP8 },
    Pair { 0x5C, KEY_KP9 },
    Pair { 0x5D, KEY_YEN },
    Pair { 0x5E, KEY_RO },
    Pair { 0x5F, KEY_KPCOMMA },
    Pair { 0x60, KEY_F5 },
    Pair { 0x61, KEY_F6 },
    Pair { 0x62, KEY_F7 },
    Pair { 0x63, KEY_F3 },
    Pair { 0x64, KEY_F8 },
    Pair { 0x65, KEY_F9 },
    Pair { 0x66, KEY_HANJA }, // Eisu, which Apple boards report as the second language key
    Pair { 0x67, KEY_F11 },
    Pair { 0x68, KEY_HANGEUL }, // Kana, the first language key
    Pair { 0x69, KEY_F13 },
    Pair { 0x6A, KEY_F16 },
    Pair { 0x6B, KEY_F14 },
    Pair { 0x6D, KEY_F10 },
    Pair { 0x6E, KEY_COMPOSE },
    Pair { 0x6F, KEY_F12 },
    Pair { 0x71, KEY_F15 },
    Pair { 0x72, KEY_INSERT },
    Pair { 0x73, KEY_HOME },
    Pair { 0x74, KEY_PAGEUP },
    Pair { 0x75, KEY_DELETE },
    Pair { 0x76, KEY_F4 },
    Pair { 0x77, KEY_END },
    Pair { 0x78, KEY_F2 },
    Pair { 0x79, KEY_PAGEDOWN },
    Pair { 0x7A, KEY_F1 },
    Pair { 0x7B, KEY_LEFT },
    Pair { 0x7C, KEY_RIGHT },
    Pair { 0x7D, KEY_DOWN },
    Pair { 0x7E, KEY_UP },
};

constexpr std::int16_t None = -1;

constexpr auto ByKeyCode = [] {
    std::array<std::int16_t, 0x80> codes {};
    codes.fill(None);
    for (const Pair& pair : Table)
        codes[pair.keyCode] = static_cast<std::int16_t>(pair.evdev);
    return codes;
}();
} // namespace

std::optional<int> evdevCode(KeyCode keyCode)
{
    if (keyCode >= ByKeyCode.size() || ByKeyCode[keyCode] == None)
        return {};
    return ByKeyCode[keyCode];
}

std::optional<KeyCode> keyCode(int evdev)
{
    const auto found = std::ranges::find(Table, evdev, &Pair::evdev);
    if (found == Table.end())
        return {};
    return found->keyCode;
}

std::span<const Pair> table()
{
    return Table;
}

} // namespace kestrel::EvdevKeyMap
