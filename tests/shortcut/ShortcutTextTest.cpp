#include "common/KestrelUtilities.h"
#include "tests/shortcut/FieldBench.h"

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
    const QString thirteen = QString(11, 'x') + u"\U00010428"_qs; // the last one has two units
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
