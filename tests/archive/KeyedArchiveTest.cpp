#include "archive/KeyedArchive.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"
#include "tests/archive/ArchiveText.h"
#include "tests/archive/ListText.h"
#include "tests/archive/Refusal.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrel::test {

namespace {

std::vector<std::string> writtenObjects(const ArchiveValue& root)
{
    const PropertyList list = PropertyList::fromBytes(KeyedArchive::archivedData(root));
    std::vector<std::string> lines;
    for (plist_t node : PropertyListNode::items(plist_dict_get_item(list.root(), "$objects")))
        lines.push_back(listText(node));
    return lines;
}

std::string roundTrip(const ArchiveValue& root)
{
    return archiveText(KeyedArchive::unarchivedRoot(KeyedArchive::archivedData(root)));
}

std::string read(std::string_view archive)
{
    return archiveText(KeyedArchive::unarchivedRoot(viewOf(archive)));
}

ArchiveValue string(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

std::shared_ptr<ArchiveArray> arrayOf(std::initializer_list<ArchiveValue> values)
{
    return std::make_shared<ArchiveArray>(values);
}

TEST(KeyedArchive, numbers_its_objects_depth_first_as_the_framework_does)
{
    auto table = std::make_shared<ArchiveDictionary>();
    table->set(1, arrayOf({ 0, 0, QString(), false }));
    table->set(2, arrayOf({ 0, 7, string("⌘"), true }));
    const std::string dictionaryClass = "{ $classname=\"NSMutableDictionary\" $classes=[ "
                                        "\"NSMutableDictionary\" \"NSDictionary\" \"NSObject\" ] }";
    EXPECT_EQ(writtenObjects(table),
        (std::vector<std::string> {
            "\"$null\"",
            "{ NS.keys=[ @2 @3 ] NS.objects=[ @4 @9 ] $class=@13 }",
            "1",
            "2",
            "{ NS.objects=[ @5 @5 @6 @7 ] $class=@8 }",
            "0",
            "\"\"",
            "false",
            R"({ $classname="NSMutableArray" $classes=[ "NSMutableArray" "NSArray" "NSObject" ] })",
            "{ NS.objects=[ @5 @10 @11 @12 ] $class=@8 }",
            "7",
            "\"⌘\"",
            "true",
            dictionaryClass,
        }));
}

TEST(KeyedArchive, names_its_archiver_its_version_and_its_root)
{
    const Bytes bytes = KeyedArchive::archivedData(5);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 8), "bplist00");
    EXPECT_EQ(listText(PropertyList::fromBytes(bytes).root()),
        "{ $version=100000 $archiver=\"NSKeyedArchiver\" $top={ root=@1 } "
        "$objects=[ \"$null\" 5 ] }");
}

TEST(KeyedArchive, numbers_keep_their_type)
{
    const auto numbers = arrayOf({ 0, false, 1, true, 1.0, -1, std::numeric_limits<double>::max(),
        std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::uint64_t>::max(), std::uint64_t(1) << 63, 0.1, -0.0 });
    EXPECT_EQ(roundTrip(numbers), archiveText(numbers));
    EXPECT_EQ(roundTrip(arrayOf({ std::numeric_limits<std::uint64_t>::max(), -1 })),
        "[u18446744073709551615,i-1,]");
}

TEST(KeyedArchive, text_and_data_survive_whatever_is_in_them)
{
    const auto values = arrayOf({ string(""), string("$null"), string("Grüße ⌘ 😀 <&>\r\n"),
        QString(QChar(0)) + QChar(u'x'), QByteArray("\0\1\xFF", 3), QByteArray() });
    EXPECT_EQ(roundTrip(values), archiveText(values));
}

TEST(KeyedArchive, a_missing_root_is_a_reference_to_nothing)
{
    EXPECT_EQ(writtenObjects({}), std::vector<std::string> { "\"$null\"" });
    EXPECT_EQ(roundTrip({}), "nil");
}

TEST(KeyedArchive, nothing_inside_a_collection_is_an_object_of_its_own)
{
    const auto values = arrayOf({ ArchiveValue(), 1, ArchiveValue() });
    EXPECT_EQ(writtenObjects(values)[1], "{ NS.objects=[ @2 @4 @2 ] $class=@5 }");
    EXPECT_EQ(writtenObjects(values)[2], "{ $class=@3 }");
    EXPECT_EQ(roundTrip(values), "[nil,i1,nil,]");
}

TEST(KeyedArchive, an_array_that_is_shared_is_shared_again)
{
    const auto shared = arrayOf({ 1 });
    const auto root = KeyedArchive::unarchivedRoot(
        KeyedArchive::archivedData(arrayOf({ shared, shared, arrayOf({ 1 }) })));
    root.array()->at(0).array()->replace(0, 5);
    EXPECT_EQ(archiveText(root), "[[i5,],[i5,],[i1,],]");
}

TEST(KeyedArchive, an_object_of_an_unknown_class_is_kept_member_by_member)
{
    const std::string archive = xmlArchive("<dict><key>$class</key>" + xmlUid(3)
        + "<key>NS.time</key><real>1.5</real><key>URL</key>" + xmlUid(2)
        + "<key>flag</key><true/><key>inline</key><string>s</string><key>bytes</key>"
        + "<data>AAEC</data><key>NS.objects</key><array>" + xmlUid(2) + xmlUid(2)
        + "</array><key>none</key>" + xmlUid(0) + "</dict><string>x</string>" + xmlClass("Odd"));
    const std::string expected = "Odd:NSObject<=NS.time r0x1.8p+0;&URL 'x';=flag true;=inline 's';"
                                 "=bytes #000102;=NS.objects ['x','x',];&none nil;>";
    EXPECT_EQ(read(archive), expected);
    EXPECT_EQ(roundTrip(KeyedArchive::unarchivedRoot(viewOf(archive))), expected);
}

TEST(KeyedArchive, reads_immutable_classes_as_ones_that_can_be_changed)
{
    const std::string archive = xmlArchive("<dict><key>NS.keys</key><array>" + xmlUid(2)
        + "</array><key>NS.objects</key><array>" + xmlUid(3) + "</array><key>$class</key>"
        + xmlUid(4) + "</dict><integer>6</integer><dict><key>NS.objects</key><array>" + xmlUid(2)
        + "</array><key>$class</key>" + xmlUid(5) + "</dict>" + xmlClass("NSDictionary")
        + xmlClass("NSArray"));
    EXPECT_EQ(read(archive), "{i6:[i6,],}");
}

TEST(KeyedArchive, reads_wrapped_strings_data_and_numbers)
{
    const auto wrapped = [](const char* className, const char* member) {
        return read(xmlArchive(std::string("<dict>") + member + "<key>$class</key>" + xmlUid(2)
            + "</dict>" + xmlClass(className)));
    };
    EXPECT_EQ(wrapped("NSString", "<key>NS.string</key><string>a</string>"), "'a'");
    EXPECT_EQ(wrapped("NSMutableString", "<key>NS.string</key><string>⌥</string>"), "'⌥'");
    EXPECT_EQ(wrapped("NSString", "<key>NS.bytes</key><data>4oyY</data>"), "'⌘'");
    EXPECT_EQ(wrapped("NSMutableData", "<key>NS.data</key><data>4oyY</data>"), "#e28c98");
    EXPECT_EQ(wrapped("NSData", "<key>NS.data</key><data></data>"), "#");
    EXPECT_EQ(wrapped("NSNumber", "<key>NS.intval</key><integer>-4</integer>"), "i-4");
    EXPECT_EQ(wrapped("NSNumber", "<key>NS.boolval</key><true/>"), "true");
    EXPECT_EQ(wrapped("NSNumber", "<key>NS.dblval</key><real>2</real>"), "r0x1p+1");
    EXPECT_EQ(wrapped("NSNull", ""), "nil");
}

TEST(KeyedArchive, the_last_of_equal_keys_wins)
{
    const std::string archive = xmlArchive("<dict><key>NS.keys</key><array>" + xmlUid(2) + xmlUid(3)
        + "</array><key>NS.objects</key><array>" + xmlUid(2) + xmlUid(3)
        + "</array><key>$class</key>" + xmlUid(4) + "</dict><integer>1</integer><real>1</real>"
        + xmlClass("NSDictionary"));
    EXPECT_EQ(read(archive), "{i1:r0x1p+0,}");
}

TEST(KeyedArchive, a_value_that_holds_itself_is_not_archived)
{
    const auto array = arrayOf({ 1 });
    array->append(array);
    try {
        (void)KeyedArchive::archivedData(array);
        FAIL() << "archived";
    } catch (const ArchiveError& error) {
        EXPECT_EQ(error.kind(), Kind::Cycle);
    }
    array->replace(1, 0);
}

TEST(KeyedArchive, what_is_archived_can_be_read_up_to_the_limit_of_depth)
{
    ArchiveValue value = arrayOf({});
    for (int i = 0; i < 127; ++i)
        value = arrayOf({ value });
    EXPECT_EQ(roundTrip(value), archiveText(value));
    try {
        (void)KeyedArchive::archivedData(arrayOf({ value }));
        FAIL() << "archived";
    } catch (const ArchiveError& error) {
        EXPECT_EQ(error.kind(), Kind::TooDeep);
    }
}

TEST(KeyedArchive, what_is_archived_can_be_read_up_to_the_limit_of_values)
{
    auto full = std::make_shared<ArchiveArray>();
    while (full->size() < 49'999)
        full->append(static_cast<int>(full->size()));
    EXPECT_EQ(KeyedArchive::unarchivedRoot(KeyedArchive::archivedData(full)), ArchiveValue(full));
    full->append(0);
    try {
        (void)KeyedArchive::archivedData(full);
        FAIL() << "archived";
    } catch (const ArchiveError& error) {
        EXPECT_EQ(error.kind(), Kind::TooManyObjects);
    }
}

TEST(KeyedArchive, the_largest_object_of_unknown_classes_can_be_read_again)
{
    auto array = std::make_shared<ArchiveArray>();
    while (array->size() < 16'660) // three values each: object, class, base class
        array->append(std::make_shared<ArchiveObject>(
            QStringList { QString::number(array->size()), QStringLiteral("NSObject") }));
    EXPECT_EQ(KeyedArchive::unarchivedRoot(KeyedArchive::archivedData(array)), ArchiveValue(array));
}

} // namespace

} // namespace kestrel::test
