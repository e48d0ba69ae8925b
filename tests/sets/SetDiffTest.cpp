#include "sets/SetDiff.h"

#include "tests/sets/SetBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> differences(const SetText::Root& old, const SetText::Root& now)
{
    std::vector<std::string> lines;
    for (const SetDiff::Difference& difference : SetDiff::between(old, now))
        lines.push_back(
            (difference.place + ": " + difference.was + " → " + difference.is).toStdString());
    return lines;
}

TEST(SetDiff, tells_by_key_what_was_and_what_is)
{
    SetBuilder old;
    old.title(3, "Save").record(3, 0, { 0x100000, 1, QStringLiteral("S"), false });
    SetBuilder now;
    now.title(3, "Save as").record(3, 0, { 0x120000, 1, QStringLiteral("S"), false });
    now.title(13, "More");
    EXPECT_THAT(differences(old.set(), now.set()),
        ElementsAre("key 3 name: \"Save\" → \"Save as\"", "key 3 shortcuts: ⌘S → ⇪⌘S",
            "key 13 name: none → \"More\""));
}

TEST(SetDiff, the_order_of_keys_does_not_matter)
{
    SetBuilder old;
    SetBuilder now;
    now.shortcuts = std::make_shared<ArchiveDictionary>();
    for (int number = 12; number >= 1; --number)
        now.shortcuts->set(number, emptyButtonEntry());
    EXPECT_THAT(differences(old.set(), now.set()), IsEmpty());
}

TEST(SetDiff, tells_equal_numbers_of_other_types_apart)
{
    SetBuilder old;
    old.record(3, 0, { 0, 1, QStringLiteral("S"), false });
    SetBuilder now;
    now.record(3, 0, { 0, 1.0, QStringLiteral("S"), false });
    ASSERT_EQ(differences(old.set(), now.set()).size(), 1u);
    EXPECT_THAT(
        differences(old.set(), now.set())[0], testing::HasSubstr("[0, { \"$real\": \"1\" }, "));
    now.record(3, 0, { 0, 1, QStringLiteral("S"), 0 });
    EXPECT_THAT(differences(old.set(), now.set()), IsEmpty()) << "Kestrel writes no or 0";
}

TEST(SetDiff, tells_equal_numbers_of_other_types_apart_inside_other_values)
{
    const auto setWith = [](const ArchiveValue& number) {
        const auto inner = std::make_shared<ArchiveDictionary>();
        inner->set(QStringLiteral("list"), std::make_shared<ArchiveArray>(ArchiveArray { number }));
        SetText::Root set = SetBuilder().set();
        set->encodeObject(QStringLiteral("extra"), inner);
        return set;
    };
    EXPECT_THAT(differences(setWith(7), setWith(7)), IsEmpty());
    EXPECT_EQ(differences(setWith(7), setWith(7.0)).size(), 1u);
}

TEST(SetDiff, tells_equal_keys_of_other_types_apart)
{
    SetBuilder old;
    SetBuilder now;
    now.titles = std::make_shared<ArchiveDictionary>();
    for (int number = 1; number <= 12; ++number)
        now.titles->set(number == 5 ? ArchiveValue(5.0) : ArchiveValue(number), QString());
    EXPECT_THAT(differences(old.set(), now.set()),
        ElementsAre("key 5 name, its number: 5 → { \"$real\": \"5\" }"));
}

TEST(SetDiff, tells_what_no_shortcut_shows)
{
    SetBuilder old;
    SetBuilder now;
    now.record(1, 1, { 0, 7, QString(), false });
    ASSERT_EQ(differences(old.set(), now.set()).size(), 1u);
    EXPECT_THAT(differences(old.set(), now.set())[0], testing::HasSubstr("0, 7, \"\", false"));
    const SetText::Root more = now.set();
    more->encodeObject(QStringLiteral("extra"), 5);
    EXPECT_THAT(differences(now.set(), more), ElementsAre("extra: none → 5"));
}

} // namespace
} // namespace kestrel::test
