#include "platform/linux/x11/X11KeyTranslation.h"

#include "tests/support/PollMainLoop.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

// Every keyboard event of macOS has this flag.
constexpr ModifierFlags Always = 0x100;

// The state bits of X11 events.
constexpr std::uint32_t XShift = 1;
constexpr std::uint32_t XLock = 2;
constexpr std::uint32_t XControl = 4;
constexpr std::uint32_t XMod1 = 8; // Alt
constexpr std::uint32_t XMod2 = 16; // Num Lock
constexpr std::uint32_t XMod4 = 64; // Super

// Translates without an X server, so that only the event itself counts.
std::optional<TranslatedKey> translated(const NativeKeyEvent& event)
{
    ::unsetenv("DISPLAY");
    PollMainLoop loop;
    return X11KeyTranslation(std::make_shared<X11Session>(loop)).translate(event);
}

std::optional<TranslatedKey> translated(
    std::uint32_t evdev, std::uint32_t keysym, std::uint32_t state = 0, std::string_view text = "")
{
    return translated(NativeKeyEvent { evdev + 8, keysym, state, text });
}

TEST(X11KeyTranslation, the_key_code_is_that_of_the_position_whatever_the_key_types)
{
    EXPECT_EQ(translated(KEY_A, XKB_KEY_a, 0, "a"), (TranslatedKey { 0, Always, "a" }));
    EXPECT_EQ(translated(KEY_A, XKB_KEY_q, 0, "q"), (TranslatedKey { 0, Always, "q" }));
    EXPECT_EQ(translated(KEY_F5, XKB_KEY_F5), (TranslatedKey { 96, Always, "" }));
}

TEST(X11KeyTranslation, alt_is_option_and_super_is_command)
{
    const auto flags
        = [](std::uint32_t state) { return translated(KEY_S, XKB_KEY_s, state)->flags; };
    EXPECT_EQ(flags(XShift), Always | Modifier::Shift);
    EXPECT_EQ(flags(XControl), Always | Modifier::Control);
    EXPECT_EQ(flags(XMod1), Always | Modifier::Option);
    EXPECT_EQ(flags(XMod4), Always | Modifier::Command);
    EXPECT_EQ(flags(XLock), Always | Modifier::CapsLock);
    EXPECT_EQ(flags(XShift | XControl | XMod1 | XMod4), Always | Modifier::Used);
}

TEST(X11KeyTranslation, num_lock_mouse_buttons_and_layout_groups_are_no_modifiers)
{
    EXPECT_EQ(translated(KEY_S, XKB_KEY_s, XMod2 | 0x100 | 0x2000)->flags, Always);
}

TEST(X11KeyTranslation, characters_honour_shift_and_ignore_control_alt_and_super)
{
    EXPECT_EQ(translated(KEY_S, XKB_KEY_s, XControl, "\x13")->charactersIgnoringModifiers, "s");
    EXPECT_EQ(
        translated(KEY_S, XKB_KEY_S, XControl | XShift, "\x13")->charactersIgnoringModifiers, "S");
    EXPECT_EQ(translated(KEY_2, XKB_KEY_at, XShift, "@")->charactersIgnoringModifiers, "@");
    EXPECT_EQ(translated(KEY_S, XKB_KEY_s, XMod4, "s")->charactersIgnoringModifiers, "s");
}

TEST(X11KeyTranslation, characters_of_other_scripts_are_those_of_the_layout)
{
    EXPECT_EQ(translated(KEY_S, XKB_KEY_Cyrillic_yeru, XControl)->charactersIgnoringModifiers, "ы");
    EXPECT_EQ(
        translated(KEY_7, 0x100263A, 0)->charactersIgnoringModifiers, "☺"); // a Unicode keysym
}

TEST(X11KeyTranslation, control_characters_are_no_characters)
{
    EXPECT_EQ(translated(KEY_ENTER, XKB_KEY_Return, 0, "\r"), (TranslatedKey { 36, Always, "" }));
    EXPECT_EQ(translated(KEY_ESC, XKB_KEY_Escape, 0, "\033"), (TranslatedKey { 53, Always, "" }));
    EXPECT_EQ(
        translated(KEY_DELETE, XKB_KEY_Delete, 0, "\x7F"), (TranslatedKey { 117, Always, "" }));
    EXPECT_EQ(translated(KEY_TAB, XKB_KEY_ISO_Left_Tab, XShift),
        (TranslatedKey { 48, Always | Modifier::Shift, "" }));
}

TEST(X11KeyTranslation, dead_keys_have_their_accent_though_they_type_nothing)
{
    EXPECT_EQ(translated(KEY_EQUAL, XKB_KEY_dead_acute)->charactersIgnoringModifiers, "´");
    EXPECT_EQ(translated(KEY_GRAVE, XKB_KEY_dead_circumflex)->charactersIgnoringModifiers, "^");
}

TEST(X11KeyTranslation, modifier_keys_make_no_key_event)
{
    for (const auto& [evdev, keysym] : { std::pair { KEY_LEFTSHIFT, XKB_KEY_Shift_L },
             { KEY_RIGHTSHIFT, XKB_KEY_Shift_R }, { KEY_LEFTCTRL, XKB_KEY_Control_L },
             { KEY_RIGHTCTRL, XKB_KEY_Control_R }, { KEY_LEFTALT, XKB_KEY_Alt_L },
             { KEY_RIGHTALT, XKB_KEY_ISO_Level3_Shift }, { KEY_LEFTMETA, XKB_KEY_Super_L },
             { KEY_RIGHTMETA, XKB_KEY_Super_R }, { KEY_CAPSLOCK, XKB_KEY_Caps_Lock } })
        EXPECT_EQ(translated(static_cast<std::uint32_t>(evdev), static_cast<std::uint32_t>(keysym)),
            std::nullopt)
            << evdev;
}

TEST(X11KeyTranslation, keys_without_a_key_code_are_no_keys)
{
    EXPECT_EQ(translated(KEY_MICMUTE, XKB_KEY_XF86AudioMicMute), std::nullopt);
    EXPECT_EQ(translated(NativeKeyEvent { 0, XKB_KEY_a, 0, "a" }), std::nullopt);
    EXPECT_EQ(translated(NativeKeyEvent { 0xFFFFFFFF, XKB_KEY_a, 0, "a" }), std::nullopt);
}

} // namespace
} // namespace kestrel::test
