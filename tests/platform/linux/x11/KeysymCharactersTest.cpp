#include "platform/linux/x11/KeysymCharacters.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <string_view>

namespace kestrel::test {
namespace {

TEST(KeysymCharacters, every_dead_key_that_xkbcommon_knows_has_characters)
{
    int count = 0;
    for (xkb_keysym_t keysym = 0xFE00; keysym <= 0xFEFF; ++keysym) {
        std::array<char, 64> name {};
        xkb_keysym_get_name(keysym, name.data(), name.size());
        if (!std::string_view(name.data()).starts_with("dead_"))
            continue;
        ++count;
        EXPECT_NE(charactersOfKeysym(keysym), "") << name.data();
    }
    EXPECT_GE(count, 49);
}

TEST(KeysymCharacters, accents_are_spacing_characters)
{
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_grave), "`");
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_acute), "´");
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_circumflex), "^");
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_tilde), "~");
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_diaeresis), "¨");
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_cedilla), "¸");
    EXPECT_EQ(charactersOfKeysym(XKB_KEY_dead_belowdot), "\u25CC\u0323");
}

TEST(KeysymCharacters, keysyms_without_characters_and_control_characters_have_none)
{
    for (const xkb_keysym_t keysym : { XKB_KEY_NoSymbol, XKB_KEY_F5, XKB_KEY_Shift_L,
             XKB_KEY_Return, XKB_KEY_Escape, XKB_KEY_Delete, XKB_KEY_Tab, XKB_KEY_BackSpace })
        EXPECT_EQ(charactersOfKeysym(keysym), "") << keysym;
}

} // namespace
} // namespace kestrel::test
