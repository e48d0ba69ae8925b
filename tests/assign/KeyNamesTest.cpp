#include "assign/KeyNames.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace kestrel::test {
namespace {

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

TEST(KeyNames, a_key_is_found_by_its_own_name_in_capital_and_small_letters)
{
    for (int code = 0; code <= 127; ++code) {
        const QString name = KeyNames::fixedName(static_cast<KeyCode>(code));
        if (name.isEmpty())
            continue;
        EXPECT_EQ(KeyNames::keyOfFixedName(name), code);
        EXPECT_EQ(KeyNames::keyOfFixedName(name.toLower()), code);
    }
    for (const char* name : { "", "A", "F21", "NUM", "PAGE  UP" })
        EXPECT_EQ(KeyNames::keyOfFixedName(name), std::nullopt) << name;
}

} // namespace
} // namespace kestrel::test
