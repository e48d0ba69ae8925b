#include "sets/SetCheck.h"

#include "tests/sets/SetBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

bool hasAll(KeyCode)
{
    return true;
}

// A layout in which key 41 types an ö, key 6 a y and no other key anything.
QStringList german(KeyCode key)
{
    if (key == 41)
        return { QStringLiteral("ö"), QStringLiteral("Ö") };
    return key == 6 ? QStringList { QStringLiteral("y"), QStringLiteral("Y") } : QStringList();
}

std::vector<std::string> findings(
    const SetText::Root& set, const SetCheck::Keyboard& keyboard = { hasAll, {} })
{
    std::vector<std::string> lines;
    for (const SetCheck::Finding& finding : SetCheck::findings(set, keyboard))
        lines.push_back((SetCheck::name(finding.kind) + ": " + finding.message).toStdString());
    return lines;
}

TEST(SetCheck, finds_nothing_in_a_sound_set)
{
    SetBuilder builder;
    EXPECT_THAT(findings(builder.set()), IsEmpty());
    builder.title(1, "Save").record(1, 0, { 0x100000, 1, QStringLiteral("S"), false });
    builder.record(2, 0, { 0x120000, 1, QStringLiteral("S"), false });
    EXPECT_THAT(findings(builder.set()), IsEmpty());
}

TEST(SetCheck, finds_a_shortcut_on_two_keys_whatever_its_unused_flags)
{
    SetBuilder builder;
    builder.record(2, 1, { 0x100108, 1, QStringLiteral("S"), false });
    builder.record(2, 2, { 0x100108, 1, QStringLiteral("S"), false });
    EXPECT_THAT(findings(builder.set()), IsEmpty()) << "twice on one key may be meant";
    builder.record(7, 0, { 0x100000, 1, QStringLiteral("S"), true });
    EXPECT_THAT(
        findings(builder.set()), ElementsAre("duplicate: keys 2, 7 have the same shortcut, ⌘S"));
}

TEST(SetCheck, finds_a_name_without_a_shortcut)
{
    EXPECT_THAT(findings(SetBuilder().title(3, "Mute").title(4, "  ").set()),
        ElementsAre("no-shortcut: key 3 has the name \"Mute\" and no shortcut"));
}

TEST(SetCheck, finds_what_is_kept_and_never_typed)
{
    SetBuilder builder;
    builder.record(1, 3, { 0, 1, QString(), false }).title(13, "More");
    builder.shortcuts->value(2).array()->append(0);
    EXPECT_THAT(findings(builder.set()),
        ElementsAre("unused: shortcut 4 of key 1 has a key code or modifiers and no name, so it "
                    "types nothing",
            "unused: the entry of key 2 has 1 elements more than are used",
            "unused: the console has no key 13"));
}

TEST(SetCheck, finds_damage)
{
    SetBuilder builder;
    builder.shortcuts->set(1, std::make_shared<ArchiveArray>(ArchiveArray { 1, 2 }));
    builder.shortcuts->set(2, QStringLiteral("⌘S"));
    builder.record(3, 0, { QStringLiteral("x"), 1, QStringLiteral("S"), false });
    builder.titles->set(4, 5);
    EXPECT_THAT(findings(builder.set()),
        ElementsAre("damage: the entry of key 1 has 2 elements of 16",
            "damage: the entry of key 2 is no list",
            "damage: shortcut 1 of key 3 has values of other types",
            "damage: the name of key 4 is no string"));
    const auto nothing = std::make_shared<ArchiveObject>(SetRoot::Classes);
    EXPECT_THAT(findings(nothing),
        ElementsAre("damage: the set has no table orgShortcutArray",
            "damage: the set has no table orgShortcutTitleArray"));
}

TEST(SetCheck, finds_keys_that_the_keyboard_does_not_have_or_calls_otherwise)
{
    SetBuilder builder;
    builder.record(1, 0, { 0, 96, QStringLiteral("F6"), false });
    builder.record(2, 0, { 0, 200, QStringLiteral("Q"), false });
    EXPECT_THAT(findings(builder.set(), { [](KeyCode key) { return key < 128; }, {} }),
        ElementsAre("unknown-key: shortcut 1 of key 1: key code 96 is not that of \"F6\"",
            "unknown-key: shortcut 1 of key 2: the keyboard has no key for key code 200 (\"Q\")"));
}

TEST(SetCheck, finds_keys_that_the_layout_does_not_have_or_that_type_something_else_in_it)
{
    SetBuilder builder;
    builder.record(1, 0, { 0, 41, QStringLiteral("Ö"), false });
    builder.record(1, 1, { 0, 96, QStringLiteral("F5"), false });
    EXPECT_THAT(findings(builder.set(), { hasAll, german }), IsEmpty());
    builder.record(2, 0, { 0, 6, QStringLiteral("Z"), false });
    builder.record(3, 0, { 0, 10, QStringLiteral("§"), false });
    EXPECT_THAT(findings(builder.set()), IsEmpty()) << "nobody knows the layout";
    EXPECT_THAT(findings(builder.set(), { hasAll, german }),
        ElementsAre(
            "unknown-key: shortcut 1 of key 2: in this keyboard layout the key of \"Z\" types "
            "\"Y\"",
            "unknown-key: shortcut 1 of key 3: the keyboard layout has no key for key code 10 "
            "(\"§\")"));
}

TEST(SetCheck, compares_no_name_with_a_key_that_types_nothing)
{
    SetBuilder builder;
    builder.record(1, 0, { 0, 110, QStringLiteral("\uF735"), false });
    const auto silent = [](KeyCode) { return QStringList { QString(), QString() }; };
    EXPECT_THAT(findings(builder.set(), { hasAll, silent }), IsEmpty());
}

TEST(SetCheck, reports_as_json)
{
    EXPECT_EQ(SetCheck::json({}), "{ \"findings\": [] }\n");
    EXPECT_EQ(SetCheck::json({ { SetCheck::Kind::Duplicate, { 2, 7 }, "both \"S\"" } }),
        "{ \"findings\": [{ \"kind\": \"duplicate\", \"keys\": [2, 7], \"message\": \"both "
        "\\\"S\\\"\" }] }\n");
}

} // namespace
} // namespace kestrel::test
