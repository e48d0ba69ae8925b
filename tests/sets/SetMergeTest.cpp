#include "sets/SetMerge.h"

#include "tests/sets/SetBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QString titleIn(const SetText::Root& set, int key)
{
    return set->value(SetRoot::OrgShortcutTitleArray).dictionary()->value(key).text();
}

std::vector<std::string> placesOf(const SetMerge& merge)
{
    std::vector<std::string> places;
    for (const SetMerge::Conflict& conflict : merge.conflicts)
        places.push_back(conflict.place.toStdString());
    return places;
}

TEST(SetMerge, takes_what_only_one_side_has_changed)
{
    SetBuilder base;
    base.title(1, "One").title(2, "Two");
    SetBuilder ours = SetBuilder().title(1, "Ours").title(2, "Two");
    SetBuilder theirs = SetBuilder().title(1, "One").title(2, "Theirs");
    theirs.record(1, 0, { 0, 96, QStringLiteral("F5"), false });
    const SetMerge merge = SetMerge::of(base.set(), ours.set(), theirs.set());
    EXPECT_THAT(merge.conflicts, IsEmpty());
    EXPECT_EQ(titleIn(merge.set, 1), "Ours");
    EXPECT_EQ(titleIn(merge.set, 2), "Theirs");
    const auto table = merge.set->value(SetRoot::OrgShortcutArray).dictionary();
    EXPECT_EQ(table->value(1).array()->at(2).text(), "F5");
}

TEST(SetMerge, the_same_change_on_both_sides_is_no_conflict)
{
    const SetBuilder base;
    const SetBuilder ours = SetBuilder().title(1, "Same");
    const SetBuilder theirs = SetBuilder().title(1, "Same");
    const SetMerge merge = SetMerge::of(base.set(), ours.set(), theirs.set());
    EXPECT_THAT(merge.conflicts, IsEmpty());
    EXPECT_EQ(titleIn(merge.set, 1), "Same");
}

TEST(SetMerge, takes_a_number_of_another_type_from_the_side_that_has_changed_it)
{
    using Type = ArchiveValue::Type;
    SetBuilder base;
    base.record(1, 0, { 0, 1, QStringLiteral("S"), false });
    const SetBuilder ours = SetBuilder().record(1, 0, { 0, 1, QStringLiteral("S"), false });
    SetBuilder theirs;
    theirs.shortcuts = std::make_shared<ArchiveDictionary>();
    for (int number = 1; number <= 12; ++number)
        theirs.shortcuts->set(static_cast<double>(number), emptyButtonEntry());
    theirs.record(1, 0, { 0, 1.0, QStringLiteral("S"), false });
    for (const auto& [left, right] : { std::pair { ours, theirs }, { theirs, ours } }) {
        const SetMerge merge = SetMerge::of(base.set(), left.set(), right.set());
        EXPECT_THAT(merge.conflicts, IsEmpty());
        const auto table = merge.set->value(SetRoot::OrgShortcutArray).dictionary();
        ASSERT_EQ(table->size(), 12u);
        EXPECT_EQ(table->begin()->key.type(), Type::Real);
        EXPECT_EQ(table->value(1).array()->at(1).type(), Type::Real);
    }
    const SetBuilder third = SetBuilder().record(1, 0, { 0, 2, QStringLiteral("D"), false });
    EXPECT_EQ(SetMerge::of(base.set(), third.set(), theirs.set()).conflicts.size(), 1u);
}

TEST(SetMerge, tells_conflicts_by_key_and_keeps_ours)
{
    const SetBuilder base;
    SetBuilder ours = SetBuilder().title(4, "Ours");
    ours.record(5, 0, { 0, 96, QStringLiteral("F5"), false });
    SetBuilder theirs = SetBuilder().title(4, "Theirs");
    theirs.record(5, 0, { 0, 97, QStringLiteral("F6"), false });
    const SetMerge merge = SetMerge::of(base.set(), ours.set(), theirs.set());
    ASSERT_THAT(placesOf(merge), ElementsAre("key 5 shortcuts", "key 4 name"));
    EXPECT_EQ(merge.conflicts[0].base, "none used");
    EXPECT_EQ(merge.conflicts[0].ours, "F5");
    EXPECT_EQ(merge.conflicts[0].theirs, "F6");
    EXPECT_EQ(titleIn(merge.set, 4), "Ours");
}

TEST(SetMerge, a_key_that_one_side_has_changed_and_the_other_one_removed_is_a_conflict)
{
    SetBuilder base;
    base.title(13, "Old");
    SetBuilder ours;
    ours.title(13, "Ours");
    const SetMerge merge = SetMerge::of(base.set(), ours.set(), SetBuilder().set());
    ASSERT_THAT(placesOf(merge), ElementsAre("key 13 name"));
    EXPECT_EQ(titleIn(merge.set, 13), "Ours");
}

TEST(SetMerge, a_key_that_one_side_has_removed_goes_and_one_that_it_has_added_comes)
{
    SetBuilder base;
    base.title(13, "Gone");
    SetBuilder ours;
    ours.title(13, "Gone");
    SetBuilder theirs;
    theirs.title(14, "New");
    const SetMerge merge = SetMerge::of(base.set(), ours.set(), theirs.set());
    const auto titles = merge.set->value(SetRoot::OrgShortcutTitleArray).dictionary();
    EXPECT_THAT(merge.conflicts, IsEmpty());
    EXPECT_FALSE(titles->contains(13));
    EXPECT_EQ(titles->value(14).text(), "New");
    EXPECT_EQ(merge.set->members().size(), 4u);
}

} // namespace
} // namespace kestrel::test
