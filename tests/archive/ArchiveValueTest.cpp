#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace kestrel::test {

namespace {

using Type = ArchiveValue::Type;

ArchiveValue text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(ArchiveValue, keeps_the_type_of_a_number)
{
    EXPECT_EQ(ArchiveValue(true).type(), Type::Boolean);
    EXPECT_EQ(ArchiveValue(1).type(), Type::Integer);
    EXPECT_EQ(ArchiveValue(1u).type(), Type::Integer);
    EXPECT_EQ(ArchiveValue(std::numeric_limits<std::uint64_t>::max()).type(), Type::Unsigned);
    EXPECT_EQ(ArchiveValue(1.0).type(), Type::Real);
}

TEST(ArchiveValue, an_integer_gives_its_low_bits)
{
    EXPECT_EQ(ArchiveValue(0x1'0000'0005).toInt32(), 5);
    EXPECT_EQ(ArchiveValue(0xFFFF'FFFF).toInt32(), -1);
    EXPECT_EQ(ArchiveValue(0x1002F).toUInt16(), 0x2F);
    EXPECT_EQ(ArchiveValue(-1).toUInt16(), 0xFFFF);
    EXPECT_EQ(ArchiveValue(std::numeric_limits<std::uint64_t>::max()).toInt64(), -1);
}

TEST(ArchiveValue, a_real_is_truncated_within_the_range_of_integers)
{
    EXPECT_EQ(ArchiveValue(7.9).toInt32(), 7);
    EXPECT_EQ(ArchiveValue(-7.9).toInt32(), -7);
    EXPECT_EQ(ArchiveValue(1e300).toInt64(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ArchiveValue(-1e300).toInt64(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(ArchiveValue(std::numeric_limits<double>::quiet_NaN()).toInt64(), 0);
    EXPECT_TRUE(ArchiveValue(0.5).toBool());
}

TEST(ArchiveValue, a_boolean_is_one_or_nothing)
{
    EXPECT_EQ(ArchiveValue(true).toInt32(), 1);
    EXPECT_EQ(ArchiveValue(false).toInt32(), 0);
    EXPECT_TRUE(ArchiveValue(2).toBool());
    EXPECT_FALSE(ArchiveValue(0).toBool());
}

TEST(ArchiveValue, a_string_is_read_as_the_framework_reads_it)
{
    EXPECT_EQ(text("  -12abc").toInt32(), -12);
    EXPECT_EQ(text("+7").toInt32(), 7);
    EXPECT_EQ(text("abc").toInt32(), 0);
    EXPECT_EQ(text("").toInt32(), 0);
    EXPECT_EQ(text("2147483647").toInt32(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(text("2147483648").toInt32(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(text("-2147483648").toInt32(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(text("-99999999999999999999").toInt64(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(text("9223372036854775807").toInt64(), std::numeric_limits<std::int64_t>::max());
    EXPECT_TRUE(text(" YES").toBool());
    EXPECT_TRUE(text("-007").toBool());
    EXPECT_FALSE(text("no").toBool());
    EXPECT_FALSE(text("00").toBool());
}

TEST(ArchiveValue, everything_else_is_nothing)
{
    EXPECT_EQ(ArchiveValue().toInt32(), 0);
    EXPECT_EQ(ArchiveValue(std::make_shared<ArchiveArray>()).toUInt16(), 0);
    EXPECT_FALSE(ArchiveValue(QByteArray("1")).toBool());
    EXPECT_EQ(ArchiveValue(5).text(), QString());
    EXPECT_EQ(ArchiveValue(5).array(), nullptr);
    EXPECT_TRUE(ArchiveValue(std::shared_ptr<ArchiveArray>()).isNull());
}

TEST(ArchiveValue, numbers_compare_by_numeric_value)
{
    EXPECT_EQ(ArchiveValue(1), ArchiveValue(1.0));
    EXPECT_EQ(ArchiveValue(1), ArchiveValue(true));
    EXPECT_NE(ArchiveValue(-1), ArchiveValue(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_NE(ArchiveValue((std::int64_t(1) << 53) + 1), ArchiveValue(9007199254740992.0));
    EXPECT_NE(ArchiveValue(1), text("1"));
    EXPECT_EQ(ArchiveValue(std::uint64_t(1) << 63), ArchiveValue(9223372036854775808.0));
}

TEST(ArchiveArray, is_shared_by_every_copy_of_its_value)
{
    const auto array = std::make_shared<ArchiveArray>(ArchiveArray { 1, 2 });
    const std::vector<ArchiveValue> copies(2, ArchiveValue(array));
    copies[1].array()->replace(0, 9);
    EXPECT_EQ(copies[0].array()->at(0), ArchiveValue(9));
}

TEST(ArchiveArray, has_nothing_beyond_its_end)
{
    ArchiveArray array { 1 };
    array.replace(1, 2);
    EXPECT_EQ(array.size(), 1u);
    EXPECT_TRUE(array.at(1).isNull());
}

TEST(ArchiveDictionary, finds_a_number_by_its_value_whatever_its_type)
{
    ArchiveDictionary dictionary;
    dictionary.set(3, text("three"));
    EXPECT_EQ(dictionary.value(3.0).text(), "three");
    EXPECT_EQ(dictionary.value(std::int64_t(3)).text(), "three");
    EXPECT_TRUE(dictionary.value(text("3")).isNull());
}

TEST(ArchiveDictionary, keeps_the_order_and_the_first_key_when_a_value_is_replaced)
{
    ArchiveDictionary dictionary;
    dictionary.set(2, text("b"));
    dictionary.set(1, text("a"));
    dictionary.set(2.0, text("c"));
    ASSERT_EQ(dictionary.size(), 2u);
    EXPECT_EQ(dictionary.keys()[0].type(), Type::Integer);
    EXPECT_EQ(dictionary.begin()->value.text(), "c");
}

TEST(ArchiveDictionary, tells_containers_apart_by_identity)
{
    const auto one = std::make_shared<ArchiveArray>();
    const auto other = std::make_shared<ArchiveArray>();
    ArchiveDictionary dictionary;
    dictionary.set(one, 1);
    EXPECT_TRUE(dictionary.contains(one));
    EXPECT_FALSE(dictionary.contains(other));
    EXPECT_FALSE(dictionary.contains(ArchiveValue()));
}

} // namespace

} // namespace kestrel::test
