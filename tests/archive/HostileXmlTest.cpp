#include "tests/archive/Refusal.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {

std::string repeated(std::string_view text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

// An archive of one value that is written in XML.
std::optional<Kind> refusalOfValue(std::string_view value)
{
    return refusal(xmlArchive(value));
}

TEST(HostileXml, plain_values_are_accepted)
{
    EXPECT_EQ(refusalOfValue("<string>a &amp; &#x2318; b</string>"), std::nullopt);
    EXPECT_EQ(refusalOfValue("<integer> -9223372036854775808 </integer>"), std::nullopt);
    EXPECT_EQ(refusalOfValue("<integer>18446744073709551615</integer>"), std::nullopt);
    EXPECT_EQ(refusalOfValue("<real>1.5e3</real>"), std::nullopt);
    EXPECT_EQ(refusalOfValue("<data>\n\tYWJj\n</data>"), std::nullopt);
    EXPECT_EQ(refusalOfValue("<true></true>"), std::nullopt);
    EXPECT_EQ(refusal("\xEF\xBB\xBF" + xmlArchive("<true/>")), std::nullopt);
}

TEST(HostileXml, what_is_no_list_at_all_is_refused)
{
    EXPECT_EQ(refusal(""), Kind::NotAPropertyList);
    EXPECT_EQ(refusal("{ a = 1; }"), Kind::NotAPropertyList);
    EXPECT_EQ(refusal(std::string(64, '\0')), Kind::NotAPropertyList);
    EXPECT_EQ(refusal("bplist01"), Kind::NotAPropertyList);
}

TEST(HostileXml, definitions_of_entities_are_refused)
{
    EXPECT_EQ(refusal("<?xml version=\"1.0\"?><!DOCTYPE plist [ <!ENTITY a \"b\"> ]>"
                      "<plist><string>&a;</string></plist>"),
        Kind::EntityDefinition);
    EXPECT_EQ(
        refusal("<plist><!ENTITY a \"b\"><string>a</string></plist>"), Kind::EntityDefinition);
    EXPECT_EQ(refusalOfValue("<string>&undefined;</string>"), Kind::MalformedXml);
}

TEST(HostileXml, nesting_is_counted_before_it_is_followed)
{
    const auto nested
        = [](std::size_t n) { return xmlList(repeated("<array>", n) + repeated("</array>", n)); };
    EXPECT_EQ(refusal(nested(128)), Kind::NotAnArchive);
    EXPECT_EQ(refusal(nested(129)), Kind::TooDeep);
    EXPECT_EQ(refusal(nested(100'000)), Kind::TooDeep);
    EXPECT_EQ(refusal("<plist>" + repeated("<array>", 1'000'000)), Kind::TooDeep);
}

TEST(HostileXml, too_many_elements_are_refused)
{
    EXPECT_EQ(refusal(xmlList("<array>" + repeated("<true/>", 499'999) + "</array>")),
        Kind::TooManyObjects);
}

TEST(HostileXml, an_integer_that_libplist_would_take_for_octal_is_refused)
{
    for (const char* number : { "0524288", "00", "-010", "+07" })
        EXPECT_EQ(
            refusal(xmlList(std::string("<integer>") + number + "</integer>")), Kind::MalformedXml)
            << number;
    for (const char* number : { "0", "-0", "+0", "10", "-10", " 5 " })
        EXPECT_EQ(
            refusal(xmlList(std::string("<integer>") + number + "</integer>")), Kind::NotAnArchive)
            << number;
}

TEST(HostileXml, a_dictionary_of_too_many_keys_is_refused)
{
    const auto dictionary = [](int keys) {
        std::string members;
        for (int i = 0; i < keys; ++i)
            members += "<key>" + std::to_string(i) + "</key><true/>";
        return xmlList("<dict>" + members + "</dict>");
    };
    EXPECT_EQ(refusal(dictionary(1'000)), Kind::NotAnArchive);
    EXPECT_EQ(refusal(dictionary(1'001)), Kind::TooManyObjects);
}

TEST(HostileXml, references_to_characters_are_counted_with_the_text_that_they_move)
{
    const auto texts = [](std::size_t count, std::size_t references) {
        return xmlList("<array>"
            + repeated("<string>" + repeated("&amp;", references) + "</string>", count)
            + "</array>");
    };
    EXPECT_EQ(refusal(texts(1, 20'000)), Kind::NotAnArchive); // 20,000 * 100,000 / 2 bytes
    EXPECT_EQ(refusal(texts(1, 21'000)), Kind::TooLarge);
    EXPECT_EQ(refusal(texts(2, 20'000)), Kind::TooLarge) << "texts are counted together";
    EXPECT_EQ(refusal(texts(100'000, 5)), Kind::NotAnArchive) << "many short texts do no harm";
    EXPECT_EQ(refusal(xmlList("<dict><key>" + repeated("&#38;", 21'000) + "</key><true/></dict>")),
        Kind::TooLarge);
}

TEST(HostileXml, too_many_bytes_are_refused)
{
    EXPECT_EQ(refusal(xmlList("<string>" + repeated("x", 16 << 20) + "</string>")), Kind::TooLarge);
}

TEST(HostileXml, elements_that_are_out_of_place_are_refused)
{
    for (const char* value : { "<array>", "</array>", "<array></dict>", "<array><array></array>",
             "<string>x", "<foo/>", "<dict><true/></dict>", "<dict><key>a</key></dict>",
             "<dict><key>a</key><key>b</key><true/></dict>", "<array><key>a</key></array>",
             "<string><true/></string>", "<true>x</true>", "<array>x</array>", "<!-- x -->",
             "<string><![CDATA[x]]></string>", "<?php?>", "<string a=\">\">x</string>",
             "<string a='>'>x</string>", "<string", "<plist/>", "</plist><true/><plist>" })
        EXPECT_EQ(refusalOfValue(value), Kind::MalformedXml) << value;
    EXPECT_EQ(refusal(xmlList("<true/><true/>")), Kind::MalformedXml);
    EXPECT_EQ(refusal(xmlList("")), Kind::MalformedXml);
    EXPECT_EQ(refusal("<plist><true/>"), Kind::MalformedXml);
    EXPECT_EQ(refusal("<?xml version=\"1.0\"?>"), Kind::MalformedXml);
    EXPECT_EQ(refusal(xmlList("<true/>") + "x"), Kind::MalformedXml);
}

TEST(HostileXml, values_that_are_not_of_their_kind_are_refused)
{
    for (const char* value : { "<integer>abc</integer>", "<integer/>", "<integer>1.5</integer>",
             "<integer>18446744073709551616</integer>", "<integer>-9223372036854775809</integer>",
             "<real>x</real>", "<real>1,5</real>", "<data>*&amp;^</data>" })
        EXPECT_EQ(refusalOfValue(value), Kind::MalformedXml) << value;
}

TEST(HostileXml, what_is_no_text_is_refused)
{
    using namespace std::string_literals;
    for (const std::string& value :
        { "<string>\xFF</string>"s, "<string>\xED\xA0\x80</string>"s, "<string>&#xD800;</string>"s,
            "<string>&#0;</string>"s, "<string>&#x110000;</string>"s, "<string>a\0b</string>"s })
        EXPECT_EQ(refusalOfValue(value), Kind::BadText) << value;
    EXPECT_EQ(refusalOfValue("<string>&#;</string>"), Kind::MalformedXml);
    EXPECT_EQ(refusalOfValue("<string>&#12</string>"), Kind::MalformedXml);
}

} // namespace

} // namespace kestrel::test
