#include "tests/archive/ArchiveText.h"
#include "tests/sets/SetBuilder.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

// The text of a set that has one key, with the given members.
QByteArray withKey(const char* members)
{
    return QByteArray("{ \"keys\": [{ \"key\": 1, ") + members + " }] }";
}

std::string entryOf(const char* members)
{
    const SetText::Root set = SetText::fromText(withKey(members));
    return archiveText(set->value(SetRoot::OrgShortcutArray).dictionary()->value(1));
}

std::string problemOf(const QByteArray& text)
{
    try {
        static_cast<void>(SetText::fromText(text));
    } catch (const TextError& error) {
        return std::to_string(error.position().line) + ':' + std::to_string(error.position().column)
            + ' ' + error.what();
    }
    return "none";
}

TEST(SetText, shows_each_key_as_an_object_with_shortcuts_as_people_write_them)
{
    SetBuilder builder;
    builder.title(6, "Save").record(6, 0, { 0x100000, 1, QStringLiteral("S"), false });
    builder.record(6, 2, { 0x180108, 40, QStringLiteral("K"), true });
    const QByteArray text = SetText::text(builder.set());
    EXPECT_TRUE(text.startsWith("{\n"
                                "  \"type\": \"PT_UserAssign\",\n"
                                "  \"version\": 1,\n"
                                "  \"keys\": [\n"
                                "    { \"key\": 1, \"title\": \"\", \"shortcuts\": [] },\n"))
        << text.constData();
    EXPECT_TRUE(text.contains(
        "    {\n"
        "      \"key\": 6,\n"
        "      \"title\": \"Save\",\n"
        "      \"shortcuts\": [\n"
        "        { \"shortcut\": \"⌘S\", \"keyCode\": 1, \"flags\": 1048576 },\n"
        "        null,\n"
        "        { \"shortcut\": \"⌥⌘K\", \"keyCode\": 40, \"flags\": 1573128, \"repeat\": true }\n"
        "      ]\n"
        "    },\n"))
        << text.constData();
    EXPECT_TRUE(text.endsWith("    { \"key\": 12, \"title\": \"\", \"shortcuts\": [] }\n  ]\n}\n"));
}

TEST(SetText, does_not_depend_on_the_order_of_the_keys_except_for_naming_it)
{
    SetBuilder builder;
    builder.shortcuts = std::make_shared<ArchiveDictionary>();
    for (const int number : { 3, 1, 2 })
        builder.shortcuts->set(number, emptyButtonEntry());
    const QByteArray text = SetText::text(builder.set());
    EXPECT_LT(text.indexOf("\"key\": 1,"), text.indexOf("\"key\": 3,"));
    EXPECT_TRUE(text.contains("\"shortcutOrder\": [3, 1, 2]")) << text.constData();
    EXPECT_FALSE(text.contains("titleOrder"));
}

TEST(SetText, takes_shortcuts_that_a_person_has_typed)
{
    EXPECT_EQ(entryOf(R"("shortcuts": [{ "shortcut": "⌥⌘K" }, null, { "shortcut": "Shift+F5" }])"),
        "[i1572864,i40,'K',false,i0,i0,'',i0,i131072,i96,'F5',false,i0,i0,'',i0,]");
    EXPECT_EQ(entryOf(R"("entry": [1, "two"])"), "[i1,'two',]");
    const SetText::Root set = SetText::fromText(withKey(R"("title": "One")"));
    EXPECT_EQ(set->value(SetRoot::MyType).text(), SetRoot::TypeTag);
    EXPECT_EQ(set->value(SetRoot::MyVersion).toInt64(), 1);
}

TEST(SetText, a_name_that_begins_with_a_modifier_is_told_apart)
{
    SetBuilder builder;
    builder.record(1, 0, { 0x40000, 33, QStringLiteral("^"), false });
    const QByteArray text = SetText::text(builder.set());
    EXPECT_TRUE(text.contains(R"("shortcut": "^^", "name": "^", "keyCode": 33, "flags": 262144)"))
        << text.constData();
    EXPECT_EQ(SetText::text(SetText::fromText(text)), text);
}

TEST(SetText, keeps_values_of_every_kind)
{
    SetBuilder builder;
    builder.titles->set(QStringLiteral("odd"),
        std::make_shared<ArchiveArray>(ArchiveArray { ArchiveValue(), true, -1,
            std::int64_t(9007199254740993), ~std::uint64_t(0), 1.0, -0.0, QByteArray("\0\1", 2) }));
    const QByteArray text = SetText::text(builder.set());
    for (const char* const value : { " null,", " true,", " -1,",
             R"({ "$integer": "9007199254740993" })", R"({ "$integer": "18446744073709551615" })",
             R"({ "$real": "1" })", R"({ "$real": "-0" })", R"({ "$data": "AAE=" })" })
        EXPECT_TRUE(text.contains(value)) << value << text.constData();
}

TEST(SetText, an_entry_of_two_keys_stays_one_entry)
{
    SetBuilder builder;
    builder.shortcuts->set(2, builder.shortcuts->value(1));
    const QByteArray text = SetText::text(builder.set());
    EXPECT_TRUE(text.contains("\"$id\": 1"));
    EXPECT_TRUE(text.contains("\"entry\": { \"$ref\": 1 }")) << text.constData();
    const auto table = SetText::fromText(text)->value(SetRoot::OrgShortcutArray).dictionary();
    EXPECT_EQ(table->value(1).array(), table->value(2).array());
}

TEST(SetText, says_where_a_text_is_no_set)
{
    EXPECT_EQ(problemOf("{}"), "1:1 \"keys\" is missing");
    EXPECT_EQ(problemOf(""), "1:1 the text ends here");
    EXPECT_EQ(problemOf("{\n  \"keys\": [,]\n}"), "2:12 no value begins like this");
    EXPECT_EQ(problemOf("{ \"keys\": [] } x"), "1:16 nothing may follow the set");
    EXPECT_EQ(problemOf("{ \"⌘😀\": 1, \"⌘😀\": 2 }"), "1:12 \"⌘😀\" is here twice");
    EXPECT_EQ(problemOf("{ \"keys\": [], \"x\": 1 }"), "1:15 \"x\" has no meaning here");
    EXPECT_EQ(
        problemOf("{ \"type\": \"Other\", \"keys\": [] }"), "1:1 a set has the type PT_UserAssign");
    EXPECT_EQ(problemOf("[1, \n\xFF]"), "2:1 the text is no UTF-8 here");
    EXPECT_EQ(problemOf("\"\\u12g4\""), "1:6 \\u needs four hexadecimal digits");
    EXPECT_EQ(problemOf("\"abc\n\""), "1:5 the string has no end");
    EXPECT_EQ(problemOf("[01]"), "1:3 a number has no 0 before its digits");
    EXPECT_EQ(problemOf(QByteArray(1001, '[')), "1:1001 nested too deep");
    EXPECT_EQ(
        problemOf(
            "{ \"keys\": [{ \"key\": 1, \"title\": \"\" },\n{ \"key\": 1, \"title\": \"\" }] }"),
        "2:10 this key is in the set twice");
}

TEST(SetText, has_each_member_of_the_root_once)
{
    const char* const twice
        = R"({ "object": { "$class": ["UserAssignFile"], "$members": ["myType", "myType"] }, "keys": [] })";
    EXPECT_EQ(problemOf(twice), "1:68 the set has this member twice");
    EXPECT_EQ(
        problemOf(
            R"({ "object": { "$class": ["UserAssignFile"], "$members": ["x"] }, "keys": [] })"),
        "1:58 \"x\" needs a value");
    EXPECT_EQ(problemOf(R"({ "object": { "$class": ["NSArray"], "$members": [] }, "keys": [] })"),
        "1:25 the class of a set is UserAssignFile");
}

TEST(SetText, says_what_is_wrong_with_a_value)
{
    EXPECT_EQ(
        problemOf(withKey(R"("title": 1.5)")), "1:33 a real is written as { \"$real\": \"1.5\" }");
    EXPECT_EQ(
        problemOf(withKey(R"("title": { "$ref": 1 })")), "1:43 no value before this has the $id 1");
    EXPECT_EQ(problemOf(withKey(R"("title": { "$id": 1, "$value": [{ "$ref": 1 }] })")),
        "1:66 no value before this has the $id 1");
    EXPECT_EQ(problemOf(withKey(R"("title": { "$data": "A" })")), "1:44 the string is no base64");
    EXPECT_EQ(problemOf(withKey(R"("title": { "$integer": "18446744073709551616" })")),
        "1:47 18446744073709551616 is no integer of 64 bits");
    EXPECT_EQ(problemOf(withKey(R"("shortcuts": [null, null, null, null, null])")),
        "1:62 a key has up to four shortcuts");
}

TEST(SetText, does_not_guess_when_a_shortcut_and_its_numbers_disagree)
{
    const std::string problem = "1:52 the modifiers of \"⌥⌘K\" are not those of the flags: correct "
                                "\"keyCode\" and \"flags\", or leave out both";
    for (const char* const flags : { "1048576", "0", "131072" })
        EXPECT_EQ(problemOf(withKey(
                      (std::string(R"("shortcuts": [{ "shortcut": "⌥⌘K", "keyCode": 40, "flags": )")
                          + flags + " }]")
                          .c_str())),
            problem);
    EXPECT_EQ(problemOf(withKey(R"("shortcuts": [{ "shortcut": "⌘K", "keyCode": 40 }])")),
        "1:38 \"flags\" is missing");
    EXPECT_EQ(problemOf(withKey(R"("shortcuts": [{ "shortcut": "Hyper+K" }])")),
        "1:52 \"Hyper+K\" names no key; a key without a name of its own needs \"keyCode\" and "
        "\"flags\"");
}

} // namespace
} // namespace kestrel::test
