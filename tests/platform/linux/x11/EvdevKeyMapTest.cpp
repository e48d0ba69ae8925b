#include "platform/linux/x11/EvdevKeyMap.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

#include <map>
#include <memory>
#include <set>
#include <string>

namespace kestrel::test {

namespace {
// The character or function of each key on a US layout. The names of the codes refer to that
// layout.
const std::map<KeyCode, std::string> UsKeys { { 0x00, "a" }, { 0x01, "s" }, { 0x02, "d" },
    { 0x03, "f" }, { 0x04, "h" }, { 0x05, "g" }, { 0x06, "z" }, { 0x07, "x" }, { 0x08, "c" },
    { 0x09, "v" }, { 0x0B, "b" }, { 0x0C, "q" }, { 0x0D, "w" }, { 0x0E, "e" }, { 0x0F, "r" },
    { 0x10, "y" }, { 0x11, "t" }, { 0x12, "1" }, { 0x13, "2" }, { 0x14, "3" }, { 0x15, "4" },
    { 0x16, "6" }, { 0x17, "5" }, { 0x18, "equal" }, { 0x19, "9" }, { 0x1A, "7" },
    { 0x1B, "minus" }, { 0x1C, "8" }, { 0x1D, "0" }, { 0x1E, "bracketright" }, { 0x1F, "o" },
    { 0x20, "u" }, { 0x21, "bracketleft" }, { 0x22, "i" }, { 0x23, "p" }, { 0x24, "Return" },
    { 0x25, "l" }, { 0x26, "j" }, { 0x27, "apostrophe" }, { 0x28, "k" }, { 0x29, "semicolon" },
    { 0x2A, "backslash" }, { 0x2B, "comma" }, { 0x2C, "slash" }, { 0x2D, "n" }, { 0x2E, "m" },
    { 0x2F, "period" }, { 0x30, "Tab" }, { 0x31, "space" }, { 0x32, "grave" },
    { 0x33, "BackSpace" }, { 0x35, "Escape" }, { 0x36, "Super_R" }, { 0x37, "Super_L" },
    { 0x38, "Shift_L" }, { 0x39, "Caps_Lock" }, { 0x3A, "Alt_L" }, { 0x3B, "Control_L" },
    { 0x3C, "Shift_R" }, { 0x3D, "Alt_R" }, { 0x3E, "Control_R" }, { 0x41, "KP_Delete" },
    { 0x43, "KP_Multiply" }, { 0x45, "KP_Add" }, { 0x47, "Num_Lock" },
    { 0x48, "XF86AudioRaiseVolume" }, { 0x49, "XF86AudioLowerVolume" }, { 0x4A, "XF86AudioMute" },
    { 0x4B, "KP_Divide" }, { 0x4C, "KP_Enter" }, { 0x4E, "KP_Subtract" }, { 0x51, "KP_Equal" },
    { 0x52, "KP_Insert" }, { 0x53, "KP_End" }, { 0x54, "KP_Down" }, { 0x55, "KP_Next" },
    { 0x56, "KP_Left" }, { 0x57, "KP_Begin" }, { 0x58, "KP_Right" }, { 0x59, "KP_Home" },
    { 0x5B, "KP_Up" }, { 0x5C, "KP_Prior" }, { 0x60, "F5" }, { 0x61, "F6" }, { 0x62, "F7" },
    { 0x63, "F3" }, { 0x64, "F8" }, { 0x65, "F9" }, { 0x67, "F11" }, { 0x6D, "F10" },
    { 0x6E, "Menu" }, { 0x6F, "F12" }, { 0x72, "Insert" }, { 0x73, "Home" }, { 0x74, "Prior" },
    { 0x75, "Delete" }, { 0x76, "F4" }, { 0x77, "End" }, { 0x78, "F2" }, { 0x79, "Next" },
    { 0x7A, "F1" }, { 0x7B, "Left" }, { 0x7C, "Right" }, { 0x7D, "Down" }, { 0x7E, "Up" } };

std::string usKeysym(int evdev)
{
    static const std::unique_ptr<xkb_context, void (*)(xkb_context*)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref);
    static const xkb_rule_names us { "evdev", "pc105", "us", "", "" };
    static const std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> keymap(
        xkb_keymap_new_from_names(context.get(), &us, XKB_KEYMAP_COMPILE_NO_FLAGS),
        &xkb_keymap_unref);
    const xkb_keysym_t* keysyms = nullptr;
    const auto key = static_cast<xkb_keycode_t>(evdev + 8);
    if (xkb_keymap_key_get_syms_by_level(keymap.get(), key, 0, 0, &keysyms) != 1)
        return "";
    char name[64] = "";
    xkb_keysym_get_name(*keysyms, name, sizeof name);
    return name;
}
} // namespace

TEST(EvdevKeyMap, a_key_of_a_us_board_is_where_it_types_what_its_name_says)
{
    std::map<KeyCode, std::string> keys;
    for (const auto& [code, name] : UsKeys) {
        if (const auto evdev = EvdevKeyMap::evdevCode(code))
            keys[code] = usKeysym(*evdev);
    }
    EXPECT_EQ(keys, UsKeys);
}

TEST(EvdevKeyMap, other_keys_are_those_of_iso_and_jis_boards_and_of_long_function_rows)
{
    std::map<KeyCode, int> keys;
    for (const EvdevKeyMap::Pair& pair : EvdevKeyMap::table()) {
        if (!UsKeys.contains(pair.keyCode))
            keys[pair.keyCode] = pair.evdev;
    }
    const std::map<KeyCode, int> expected { { 0x0A, KEY_102ND }, { 0x3F, KEY_FN },
        { 0x5D, KEY_YEN }, { 0x5E, KEY_RO }, { 0x5F, KEY_KPCOMMA }, { 0x66, KEY_HANJA },
        { 0x68, KEY_HANGEUL }, { 105, KEY_F13 }, { 107, KEY_F14 }, { 113, KEY_F15 },
        { 106, KEY_F16 }, { 64, KEY_F17 }, { 79, KEY_F18 }, { 80, KEY_F19 }, { 90, KEY_F20 } };
    EXPECT_EQ(keys, expected);
}

TEST(EvdevKeyMap, is_one_to_one_in_both_directions)
{
    std::set<int> evdevCodes;
    std::size_t count = 0;
    for (int code = 0; code <= 0xFFFF; ++code) {
        const auto evdev = EvdevKeyMap::evdevCode(static_cast<KeyCode>(code));
        if (!evdev)
            continue;
        ++count;
        evdevCodes.insert(*evdev);
        EXPECT_EQ(EvdevKeyMap::keyCode(*evdev), code);
    }
    EXPECT_EQ(count, EvdevKeyMap::table().size());
    EXPECT_EQ(evdevCodes.size(), count);
    for (int evdev = -1; evdev <= KEY_MAX; ++evdev) {
        if (const auto code = EvdevKeyMap::keyCode(evdev))
            EXPECT_EQ(EvdevKeyMap::evdevCode(*code), evdev);
        else
            EXPECT_FALSE(evdevCodes.contains(evdev));
    }
}

TEST(EvdevKeyMap, what_has_no_counterpart_is_missing)
{
    for (const int code : { 0x34, 0x42, 0x44, 0x46, 0x4D, 0x7F, 0x80, 0xFF, 0xFFFF })
        EXPECT_EQ(EvdevKeyMap::evdevCode(static_cast<KeyCode>(code)), std::nullopt) << code;
    for (const int evdev : { -1, 0, KEY_SYSRQ, KEY_SCROLLLOCK, KEY_POWER, 100000 })
        EXPECT_EQ(EvdevKeyMap::keyCode(evdev), std::nullopt) << evdev;
}

} // namespace kestrel::test
