#include "tests/sets/RandomSet.h"
#include "tests/sets/SchemaCheck.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace kestrel::test {
namespace {

SchemaCheck schema()
{
    std::ifstream file(KESTREL_SOURCE "/docs/set.schema.json");
    const std::string text { std::istreambuf_iterator(file), {} };
    return SchemaCheck(parsedJson(QByteArray::fromStdString(text)));
}

std::string faultOf(const QByteArray& text)
{
    return schema().fault(parsedJson(text));
}

TEST(SetSchema, describes_every_text_that_is_written)
{
    const SchemaCheck check = schema();
    RandomSet sets(3, RandomSet::Strings::WithUnpairedSurrogates);
    for (int i = 0; i < 2'000; ++i) {
        const QByteArray text = SetText::text(sets.next());
        ASSERT_EQ(check.fault(parsedJson(text)), "") << text.constData();
    }
}

TEST(SetSchema, describes_what_a_person_may_write)
{
    EXPECT_EQ(faultOf(R"({ "keys": [] })"), "");
    EXPECT_EQ(faultOf(R"({ "keys": [{ "key": 1, "title": "Save", "shortcuts": [
        { "shortcut": "Command+S" }, null] }] })"),
        "");
}

TEST(SetSchema, refuses_what_is_no_set)
{
    for (const char* const text : { "[]", "{}", R"({ "keys": {} })", R"({ "keys": [], "x": 1 })",
             R"({ "type": "Other", "keys": [] })", R"({ "keys": [{ "title": "no key" }] })",
             R"({ "keys": [{ "key": 1.5 }] })", R"({ "keys": [{ "key": { "$real": "one" } }] })",
             R"({ "keys": [{ "key": 1, "shortcuts": [null, null, null, null, null] }] })",
             R"({ "keys": [{ "key": 1, "shortcuts": [{ "keyCode": 1, "flags": 0 }] }] })",
             R"({ "keys": [{ "key": 1, "shortcuts": [{ "shortcut": "K", "keyCode": "1" }] }] })",
             R"({ "keys": [{ "key": 1, "title": { "$data": "!" } }] })",
             R"({ "keys": [], "object": { "$class": [], "$members": [] } })",
             R"({ "keys": [], "titleOrder": 1 })" })
        EXPECT_NE(faultOf(text), "") << text;
}

} // namespace
} // namespace kestrel::test
