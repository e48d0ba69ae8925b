#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/ArchiveObject.h"
#include "archive/KeyedArchive.h"
#include "archive/PropertyList.h"
#include "tests/archive/ListText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

namespace kestrel::test {

namespace {

// libplist's hash of a string is the same when "ab" is replaced by "bA".
std::string stringOfOneHash(int number)
{
    std::string text;
    for (int bit = 0; bit < 16; ++bit)
        text += (number >> bit & 1) != 0 ? "ab" : "bA";
    return text;
}

std::string plainString(int number)
{
    return std::to_string(1'000'000 + number);
}

PropertyList arrayOf(int count, std::string (*string)(int))
{
    PropertyList list(plist_new_array());
    for (int i = 0; i < count; ++i)
        plist_array_append_item(list.root(), plist_new_string(string(i).c_str()));
    return list;
}

double secondsToWrite(const PropertyList& list)
{
    const auto now = [] { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; };
    const double start = now();
    (void)list.toBinary();
    return now() - start;
}

std::string writtenAndRead(const PropertyList& list)
{
    return listText(PropertyList::fromBytes(list.toBinary()).root());
}

} // namespace

TEST(BinaryListWriter, writes_strings_of_one_hash_about_as_fast_as_others)
{
    const double plain = secondsToWrite(arrayOf(20'000, &plainString));
    EXPECT_LT(secondsToWrite(arrayOf(20'000, &stringOfOneHash)), 0.05 + 20 * plain);
}

TEST(BinaryListWriter, writes_equal_scalars_once)
{
    PropertyList list(plist_new_array());
    for (int i = 0; i < 100; ++i) {
        plist_array_append_item(list.root(), plist_new_string("twelve bytes"));
        plist_array_append_item(list.root(), plist_new_data("\1\2", 2));
    }
    EXPECT_LT(list.toBinary().size(), 300u);
    EXPECT_EQ(writtenAndRead(list), listText(list.root()));
}

// From 15 on, a count has a number of its own; from 256 objects on, a reference has two bytes; from
// 64 KiB on, an offset has four.
TEST(BinaryListWriter, writes_lists_of_every_size)
{
    for (const int count : { 0, 1, 14, 15, 254, 255, 256, 257, 20'000 }) {
        const PropertyList list = arrayOf(count, &plainString);
        EXPECT_EQ(writtenAndRead(list), listText(list.root())) << count;
    }
}

TEST(BinaryListWriter, writes_every_kind_of_value)
{
    PropertyList list(plist_new_dict());
    const auto add
        = [&](const char* key, plist_t node) { plist_dict_set_item(list.root(), key, node); };
    add("false", plist_new_bool(0));
    add("true", plist_new_bool(1));
    add("byte", plist_new_uint(200));
    add("long", plist_new_uint(std::uint64_t(1) << 40));
    add("negative", PropertyListNode::makeInteger({ ~std::uint64_t(4), false }).release());
    add("largest", PropertyListNode::makeInteger({ ~std::uint64_t(0), true }).release());
    add("real", plist_new_real(-0.1));
    add("date", plist_new_date(5, 250'000));
    add("data", plist_new_data("\0\xff", 2));
    add("empty", plist_new_string(""));
    add("größer 😀", plist_new_string("Größe ⌘ 😀, longer than fifteen units"));
    add("uid", plist_new_uid(70'000));
    EXPECT_EQ(writtenAndRead(list), listText(list.root()));
}

TEST(ArchiveLimits, an_object_has_as_many_members_as_can_be_read_again)
{
    const auto objectOf = [](std::size_t members) {
        auto object = std::make_shared<ArchiveObject>(QStringList { QStringLiteral("Odd") });
        for (std::size_t i = 0; i < members; ++i)
            object->encodeInteger(QString::number(i), 1);
        return object;
    };
    const Bytes archive = KeyedArchive::archivedData(objectOf(ArchiveLimits::DictionaryKeys - 1));
    EXPECT_NO_THROW((void)KeyedArchive::unarchivedRoot(archive));
    EXPECT_THROW(
        (void)KeyedArchive::archivedData(objectOf(ArchiveLimits::DictionaryKeys)), ArchiveError);
}

} // namespace kestrel::test
