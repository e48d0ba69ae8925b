#include "common/KestrelUtilities.h"
#include "shortcut/KeyNames.h"
#include "tests/shortcut/FieldBench.h"

#include <map>
#include <set>

namespace kestrel::test {
namespace {

using namespace Modifier;

QString text(std::uint64_t flags, const QString& name)
{
    return KestrelUtilities::getShortcutKey(flags, 0, name);
}

TEST(ShortcutText, glyphs_come_in_the_order_shift_control_option_command_then_plus_and_the_name)
{
    EXPECT_EQ(text(Shift | Control | Option | Command, "S"), u"\u21EA^\u2325\u2318+S");
    EXPECT_EQ(text(Shift, "TAB"), u"\u21EA+TAB");
    EXPECT_EQ(text(Control | Option, "F5"), u"^\u2325+F5");
    EXPECT_EQ(text(Shift | Command, "S"), u"\u21EA\u2318+S");
}

TEST(ShortcutText, without_modifiers_it_is_the_name_alone)
{
    EXPECT_EQ(text(0, "F5"), u"F5");
    EXPECT_EQ(text(0, "A"), u"A");
}

TEST(ShortcutText, caps_lock_keypad_and_function_bits_add_nothing)
{
    EXPECT_EQ(text(CapsLock | 0x200000 | 0x800000, "A"), u"A");
    EXPECT_EQ(text(CapsLock | Shift, "A"), u"\u21EA+A");
}

TEST(ShortcutText, only_the_low_32_bits_of_the_flags_count)
{
    EXPECT_EQ(text(std::uint64_t(Command) << 32, "A"), u"A");
    EXPECT_EQ(text(0xFFFFFFFF00000000 | Command, "A"), u"\u2318+A");
}

TEST(ShortcutText, an_empty_name_gives_an_empty_text_whatever_the_modifiers)
{
    EXPECT_EQ(text(Command | Shift, ""), u"");
}

TEST(ShortcutText, the_key_code_does_not_matter)
{
    EXPECT_EQ(KestrelUtilities::getShortcutKey(Command, 96, "S"),
        KestrelUtilities::getShortcutKey(Command, ~0ull, "S"));
}

TEST(KeyNames, exactly_55_keys_have_names_of_their_own)
{
    const std::map<int, QString> expected { { 36, "RETURN" }, { 48, "TAB" }, { 49, "SPACE" },
        { 51, "DELETE" }, { 53, "ESC" }, { 63, "FN" }, { 64, "F17" }, { 65, "NUM ." },
        { 67, "NUM *" }, { 69, "NUM +" }, { 71, "NUM CLEAR" }, { 75, "NUM /" }, { 76, "NUM ENTER" },
        { 78, "NUM -" }, { 79, "F18" }, { 80, "F19" }, { 81, "NUM =" }, { 82, "NUM 0" },
        { 83, "NUM 1" }, { 84, "NUM 2" }, { 85, "NUM 3" }, { 86, "NUM 4" }, { 87, "NUM 5" },
        { 88, "NUM 6" }, { 89, "NUM 7" }, { 90, "F20" }, { 91, "NUM 8" }, { 92, "NUM 9" },
        { 95, "NUM ," }, { 96, "F5" }, { 97, "F6" }, { 98, "F7" }, { 99, "F3" }, { 100, "F8" },
        { 101, "F9" }, { 103, "F11" }, { 105, "F13" }, { 106, "F16" }, { 107, "F14" },
        { 109, "F10" }, { 111, "F12" }, { 113, "F15" }, { 114, "HELP" }, { 115, "HOME" },
        { 116, "PAGE UP" }, { 117, u"DELETE\u2192"_qs }, { 118, "F4" }, { 119, "END" },
        { 120, "F2" }, { 121, "PAGE DOWN" }, { 122, "F1" }, { 123, u"\u2190"_qs },
        { 124, u"\u2192"_qs }, { 125, u"\u2193"_qs }, { 126, u"\u2191"_qs } };
    ASSERT_EQ(expected.size(), 55U);
    for (int code = 0; code <= 0xFFFF; ++code) {
        const auto found = expected.find(code);
        EXPECT_EQ(KeyNames::fixedName(static_cast<KeyCode>(code)),
            found == expected.end() ? QString() : found->second)
            << code;
    }
}

TEST(KeyNames, a_name_wins_over_what_the_key_types)
{
    EXPECT_EQ(KeyNames::keyName(36, "\r"), u"RETURN");
    EXPECT_EQ(KeyNames::keyName(87, "5"), u"NUM 5");
    EXPECT_EQ(KeyNames::keyName(95, ","), u"NUM ,");
    EXPECT_EQ(KeyNames::keyName(65, "."), u"NUM .");
}

TEST(KeyNames, other_keys_are_what_they_type_in_upper_case)
{
    EXPECT_EQ(KeyNames::keyName(0, "a"), u"A");
    EXPECT_EQ(KeyNames::keyName(0, "A"), u"A");
    EXPECT_EQ(KeyNames::keyName(27, u"\u00DF"_qs), u"SS");
    EXPECT_EQ(KeyNames::keyName(26, "&"), u"&");
}

TEST(KeyNames, a_key_without_name_and_characters_has_the_empty_name)
{
    EXPECT_EQ(KeyNames::keyName(200, ""), u"");
}

TEST(KeyNames, exactly_f1_to_f20_are_function_keys)
{
    const std::set<std::uint64_t> keys { 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111,
        105, 107, 113, 106, 64, 79, 80, 90 };
    for (std::uint64_t code = 0; code <= 0x10000; ++code)
        EXPECT_EQ(KeyNames::isFunctionKey(code), keys.contains(code)) << code;
    EXPECT_FALSE(KeyNames::isFunctionKey(static_cast<std::uint64_t>(std::int64_t { -1 })));
    EXPECT_FALSE(KeyNames::isFunctionKey((1ull << 32) + 96));
}

QString shown(std::uint64_t flags, const QString& name)
{
    FieldBench bench;
    bench.field(0).drawShortcutKey(flags, 0, name);
    return bench.field(0).stringValue();
}

TEST(ShortcutText, fourteen_units_break_after_the_thirteenth_even_inside_a_word)
{
    EXPECT_EQ(
        shown(Shift | Control | Option | Command, "PAGE DOWN"), u"\u21EA^\u2325\u2318+PAGE DOW\nN");
}

TEST(ShortcutText, thirteen_units_stay_on_one_line)
{
    EXPECT_EQ(shown(0, "1234567890123"), u"1234567890123");
    EXPECT_EQ(shown(Command, "PAGE DOWN"), u"\u2318+PAGE DOWN");
}

TEST(ShortcutText, however_long_there_is_only_one_break)
{
    EXPECT_EQ(shown(0, QString(40, 'x')), QString(13, 'x') + '\n' + QString(27, 'x'));
}

TEST(ShortcutText, the_break_counts_utf_16_units)
{
    const QString thirteen = QString(11, 'x') + u"\U00010428"_qs; // the last one takes two
    EXPECT_EQ(shown(0, thirteen), thirteen);
    EXPECT_EQ(shown(0, thirteen + 'y'), thirteen + "\ny");
}

TEST(ShortcutText, an_ampersand_is_drawn)
{
    FieldBench bench;
    const QImage empty = bench.field(0).grab().toImage();
    bench.field(0).drawShortcutKey(0, 26, "&");
    EXPECT_NE(bench.field(0).grab().toImage(), empty);
}

TEST(ShortcutText, an_ampersand_is_shown_as_it_is)
{
    EXPECT_EQ(shown(Command, "&"), u"\u2318+&");
}

TEST(ShortcutText, the_field_composes_as_everybody_does)
{
    FieldBench bench;
    EXPECT_EQ(bench.field(0).getShortcutKey(Control | Option, 96, "F5"), u"^\u2325+F5");
}

} // namespace
} // namespace kestrel::test
