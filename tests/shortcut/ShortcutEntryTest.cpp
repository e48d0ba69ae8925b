#include "tests/shortcut/FieldBench.h"

namespace kestrel::test {
namespace {

ButtonEntry entryOf(ArchiveArray values)
{
    return std::make_shared<ArchiveArray>(std::move(values));
}

TEST(ShortcutEntry, loading_shows_the_record_at_the_offset)
{
    FieldBench bench;
    const auto entry = entryOf({ 1, 2, QString("X"), 0, 0x100000, 1, QString("S"), true });
    bench.field(0).setUserAssignParam(4, entry);
    EXPECT_EQ(bench.field(0).myIndex(), 4);
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0x100000, 1, QString("S"), true }));
    EXPECT_EQ(bench.field(0).stringValue(), u"\u2318+S");
    EXPECT_TRUE(bench.clear(0).isEnabled());
}

TEST(ShortcutEntry, loading_an_empty_record_blanks_the_field)
{
    FieldBench bench;
    press(bench.field(0), Keys::A);
    bench.field(0).setUserAssignParam(0, entryOf({ 0x100000, 1, QString(), 0 }));
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    EXPECT_FALSE(bench.clear(0).isEnabled());
}

TEST(ShortcutEntry, loading_from_an_entry_that_is_too_short_only_updates_the_clear_button)
{
    FieldBench bench;
    press(bench.field(0), Keys::A);
    bench.clear(0).setEnabled(false);
    bench.field(0).setUserAssignParam(4, entryOf({ 1, 2, QString("X"), 0, 5, 6, QString("Y") }));
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
    EXPECT_EQ(bench.field(0).myIndex(), 0);
    EXPECT_TRUE(bench.clear(0).isEnabled());
}

TEST(ShortcutEntry, a_loaded_record_is_a_copy)
{
    FieldBench bench;
    const auto entry = entryOf({ 0, 0, QString("A"), 0 });
    bench.field(0).setUserAssignParam(0, entry);
    press(bench.field(0), Keys::F5);
    EXPECT_EQ(*entry, (ArchiveArray { 0, 0, QString("A"), 0 }));
}

TEST(ShortcutEntry, storing_replaces_the_four_elements_and_sends_no_action)
{
    FieldBench bench;
    press(bench.field(0), with(Modifier::Command, Keys::F5));
    bench.actions.clear();
    const auto entry = entryOf({ 9, 9, QString("9"), 9, 9, 9, QString("9"), 9, 9 });
    bench.field(0).replaceUserAssignParam(4, entry);
    EXPECT_EQ(
        *entry, (ArchiveArray { 9, 9, QString("9"), 9, 0x100000, 96, QString("F5"), false, 9 }));
    EXPECT_EQ(bench.actions, std::vector<int>());
}

TEST(ShortcutEntry, storing_into_an_entry_that_is_too_short_does_nothing)
{
    FieldBench bench;
    press(bench.field(0), Keys::F5);
    const auto entry = entryOf({ 9, 9, QString("9") });
    bench.field(0).replaceUserAssignParam(0, entry);
    bench.field(0).replaceUserAssignParam(-4, entry);
    bench.field(0).replaceUserAssignParam(0, nullptr);
    EXPECT_EQ(*entry, (ArchiveArray { 9, 9, QString("9") }));
}

TEST(ShortcutEntry, modifiers_and_key_code_are_compared)
{
    FieldBench bench;
    bench.field(0).setUserAssignParam(0, entryOf({ 0x100000, 1, QString("S"), 0 }));
    EXPECT_FALSE(
        bench.field(0).compareUserAssignParam(0, entryOf({ 0x100000, 1, QString("S"), 0 })));
    EXPECT_TRUE(
        bench.field(0).compareUserAssignParam(0, entryOf({ 0x120000, 1, QString("S"), 0 })));
    EXPECT_TRUE(
        bench.field(0).compareUserAssignParam(0, entryOf({ 0x100000, 2, QString("S"), 0 })));
}

TEST(ShortcutEntry, names_and_repeat_flags_are_not_compared)
{
    FieldBench bench;
    bench.field(0).setUserAssignParam(0, entryOf({ 0x100000, 1, QString("S"), 0 }));
    EXPECT_FALSE(
        bench.field(0).compareUserAssignParam(0, entryOf({ 0x100000, 1, QString("T"), true })));
}

TEST(ShortcutEntry, numbers_are_compared_by_their_low_32_bits)
{
    FieldBench bench;
    bench.field(0).setUserAssignParam(0, entryOf({ 0x100000, 1, QString("S"), 0 }));
    EXPECT_FALSE(
        bench.field(0).compareUserAssignParam(0, entryOf({ 0x700100000, 1.9, QString("S"), 0 })));
}

TEST(ShortcutEntry, an_entry_that_is_too_short_never_differs)
{
    FieldBench bench;
    press(bench.field(0), Keys::F5);
    EXPECT_FALSE(bench.field(0).compareUserAssignParam(0, entryOf({ 9, 9, QString("9") })));
    EXPECT_FALSE(bench.field(0).compareUserAssignParam(0, nullptr));
}

TEST(ShortcutEntry, elements_of_a_wrong_kind_are_shown_as_nothing_and_stored_as_they_came)
{
    FieldBench bench;
    const ArchiveArray odd { QString("flags"), QByteArray("code"), 7, ArchiveValue() };
    bench.field(0).setUserAssignParam(0, entryOf(odd));
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    EXPECT_FALSE(bench.field(0).isFncKey());
    const auto target = entryOf({ 0, 0, QString(), 0 });
    bench.field(0).replaceUserAssignParam(0, target);
    EXPECT_EQ(*target, odd);
}

TEST(ShortcutEntry, a_negative_key_code_is_no_function_key)
{
    FieldBench bench;
    bench.field(0).setUserAssignParam(0, entryOf({ 0, -1, QString("X"), 0 }));
    EXPECT_FALSE(bench.field(0).isFncKey());
}

TEST(ShortcutEntry, a_function_key_without_a_name_is_one_all_the_same)
{
    FieldBench bench;
    bench.field(0).setUserAssignParam(0, entryOf({ 0, 96, QString(), 0 }));
    EXPECT_TRUE(bench.field(0).isFncKey());
    EXPECT_TRUE(bench.field(1).isAlradyEntryFncKey(99));
}

TEST(ShortcutEntry, a_function_key_is_told_by_the_low_32_bits_of_its_code)
{
    FieldBench bench;
    bench.field(0).setUserAssignParam(0, entryOf({ 0, 0x10060, QString("X"), 0 }));
    EXPECT_FALSE(bench.field(0).isFncKey());
    bench.field(0).setUserAssignParam(0, entryOf({ 0, 0x100000060, QString("X"), 0 }));
    EXPECT_TRUE(bench.field(0).isFncKey());
}

} // namespace
} // namespace kestrel::test
