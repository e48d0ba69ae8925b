#include "archive/PropertyList.h"
#include "tests/archive/ListBuilder.h"
#include "tests/archive/Refusal.h"

#include <gtest/gtest.h>

#include <chrono>

namespace kestrel::test {

namespace {

// Field of the trailer, counted from its start.
constexpr std::size_t OffsetSize = 6;
constexpr std::size_t ReferenceSize = 7;
constexpr std::size_t ObjectCount = 8;
constexpr std::size_t RootObject = 16;
constexpr std::size_t TableStart = 24;

Bytes smallList()
{
    ListBuilder builder;
    builder.array({ builder.text("a"), builder.integer(1) });
    return builder.list();
}

// The small list with one byte of its trailer changed.
std::optional<Kind> refusalWithTrailer(std::size_t field, std::uint8_t value)
{
    Bytes list = smallList();
    list[list.size() - ListBuilder::TrailerSize + field] = value;
    return refusal(list);
}

std::optional<Kind> refusalOfObject(Bytes object)
{
    ListBuilder builder;
    builder.raw(std::move(object));
    return refusal(builder.list());
}

// `levels` arrays, each holding the one before `width` times.
Bytes doubled(int levels, std::size_t width)
{
    ListBuilder builder;
    std::size_t inner = builder.array({});
    for (int i = 0; i < levels; ++i) {
        Bytes object { static_cast<std::uint8_t>(0xA0 | width) };
        object.insert(object.end(), width, static_cast<std::uint8_t>(inner));
        inner = builder.raw(std::move(object));
    }
    return builder.list();
}

// The archive of an array object that holds `elements`.
std::string arrayArchive(const std::string& elements, const std::string& objects = {})
{
    return xmlArchive("<dict><key>NS.objects</key><array>" + elements + "</array><key>$class</key>"
        + xmlUid(2) + "</dict>" + xmlClass("NSArray") + objects);
}

std::string objectOfClass(const std::string& className, const std::string& members)
{
    return xmlArchive(
        "<dict>" + members + "<key>$class</key>" + xmlUid(2) + "</dict>" + xmlClass(className));
}

TEST(HostileList, a_sound_list_reaches_the_archive)
{
    EXPECT_EQ(refusal(smallList()), Kind::NotAnArchive);
}

TEST(HostileList, every_shortened_list_is_refused)
{
    const Bytes list = smallList();
    for (std::size_t size = 8; size < list.size(); ++size) {
        const auto kind = refusal(ByteView(list).first(size));
        EXPECT_TRUE(kind && *kind != Kind::NotAnArchive) << size;
    }
    EXPECT_EQ(refusal(ByteView(list).first(39)), Kind::Truncated);
}

TEST(HostileList, a_trailer_that_does_not_fit_is_refused)
{
    EXPECT_EQ(refusalWithTrailer(OffsetSize, 0), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(OffsetSize, 9), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(OffsetSize, 8), Kind::Truncated);
    EXPECT_EQ(refusalWithTrailer(ReferenceSize, 0), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(ReferenceSize, 9), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(ReferenceSize, 8), Kind::Truncated);
    EXPECT_EQ(refusalWithTrailer(ObjectCount, 0xFF), Kind::TooManyObjects);
    EXPECT_EQ(refusalWithTrailer(ObjectCount + 7, 0), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(ObjectCount + 7, 200), Kind::Truncated);
    EXPECT_EQ(refusalWithTrailer(RootObject + 7, 3), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(RootObject, 0x80), Kind::BadTrailer);
    EXPECT_EQ(refusalWithTrailer(TableStart, 0xFF), Kind::Truncated);
    EXPECT_EQ(refusalWithTrailer(TableStart + 7, 0), Kind::Truncated);
}

TEST(HostileList, objects_beyond_the_table_are_refused)
{
    EXPECT_EQ(refusalOfObject({ 0x5A, 'a' }), Kind::Truncated);
    EXPECT_EQ(refusalOfObject({ 0x13, 0 }), Kind::Truncated);
    EXPECT_EQ(refusalOfObject({ 0x5F }), Kind::Truncated);
    EXPECT_EQ(refusalOfObject({ 0x5F, 0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }),
        Kind::Truncated);
    EXPECT_EQ(refusalOfObject({ 0xAF, 0x13, 0x20, 0, 0, 0, 0, 0, 0, 1 }), Kind::Truncated);
    EXPECT_EQ(refusalOfObject({ 0xD8, 0, 0 }), Kind::Truncated);
}

TEST(HostileList, an_offset_beyond_the_table_is_refused)
{
    Bytes list = smallList();
    list[list.size() - ListBuilder::TrailerSize - 1] = 0xFF;
    EXPECT_EQ(refusal(list), Kind::Truncated);
    list[list.size() - ListBuilder::TrailerSize - 1] = 0; // the header is no object
    EXPECT_EQ(refusal(list), Kind::Truncated);
}

TEST(HostileList, kinds_that_have_no_place_are_refused)
{
    for (const int marker :
        { 0x00, 0x0F, 0x15, 0x21, 0x32, 0x70, 0x88, 0x90, 0xB0, 0xC0, 0xE0, 0xF0 })
        EXPECT_EQ(refusalOfObject({ static_cast<std::uint8_t>(marker), 0, 0, 0, 0, 0, 0, 0, 0, 0 }),
            Kind::BadMarker)
            << marker;
    EXPECT_EQ(refusalOfObject({ 0x5F, 0x50, 1, 'a' }), Kind::BadMarker);
    EXPECT_EQ(refusalOfObject({ 0x5F, 0x14, 0 }), Kind::BadMarker);
    EXPECT_EQ(
        refusalOfObject({ 0x14, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 }), Kind::BadMarker);
}

TEST(HostileList, a_reference_to_an_object_that_does_not_exist_is_refused)
{
    ListBuilder builder;
    builder.array({ 9 });
    EXPECT_EQ(refusal(builder.list()), Kind::BadReference);
    EXPECT_EQ(refusalOfObject({ 0x84, 1, 0, 0, 0, 0 }), Kind::BadReference);
}

TEST(HostileList, cycles_are_refused)
{
    ListBuilder builder;
    builder.array({ 0 });
    EXPECT_EQ(refusal(builder.list()), Kind::Cycle);
    ListBuilder longer;
    longer.array({ 1 });
    longer.dictionary({ 2, 0 });
    longer.text("k");
    EXPECT_EQ(refusal(longer.list(0)), Kind::Cycle);
}

TEST(HostileList, depth_is_limited)
{
    EXPECT_EQ(refusal(doubled(127, 1)), Kind::NotAnArchive);
    EXPECT_EQ(refusal(doubled(128, 1)), Kind::TooDeep);
}

TEST(HostileList, a_shared_part_is_as_deep_as_the_deepest_way_to_it)
{
    ListBuilder builder;
    std::size_t low = builder.array({});
    for (int i = 0; i < 100; ++i)
        low = builder.array({ low });
    std::size_t high = builder.array({ low });
    for (int i = 0; i < 40; ++i)
        high = builder.array({ high });
    builder.array({ low, high }); // `low` is first met near the root
    EXPECT_EQ(refusal(builder.list()), Kind::TooDeep);
}

TEST(HostileList, a_dictionary_of_too_many_keys_is_refused)
{
    const auto dictionary = [](int keys) {
        PropertyList list(plist_new_dict());
        for (int i = 0; i < keys; ++i)
            plist_dict_set_item(list.root(), std::to_string(i).c_str(), plist_new_bool(1));
        return list.toBinary();
    };
    EXPECT_EQ(refusal(dictionary(1'000)), Kind::NotAnArchive);
    EXPECT_EQ(refusal(dictionary(1'001)), Kind::TooManyObjects);
}

TEST(HostileList, doubled_references_are_counted_as_they_expand)
{
    const Bytes list = doubled(30, 2);
    EXPECT_LT(list.size(), 250u);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(refusal(list), Kind::TooManyObjects);
    EXPECT_EQ(refusal(doubled(100, 2)), Kind::TooManyObjects);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(refusal(doubled(15, 2)), Kind::NotAnArchive);
}

TEST(HostileList, long_texts_are_counted_as_they_expand)
{
    ListBuilder builder;
    Bytes text { 0x5F, 0x11, 0x80, 0x00 };
    text.insert(text.end(), 0x8000, 'x');
    std::size_t inner = builder.raw(std::move(text));
    for (int i = 0; i < 11; ++i)
        inner = builder.array({ inner, inner });
    EXPECT_EQ(refusal(builder.list()), Kind::TooLarge);
}

TEST(HostileList, a_key_that_is_no_string_or_occurs_twice_is_refused)
{
    ListBuilder number;
    const std::size_t one = number.integer(1);
    number.dictionary({ one, one });
    EXPECT_EQ(refusal(number.list()), Kind::BadMarker);
    ListBuilder twice;
    const std::size_t ascii = twice.text("a");
    const std::size_t wide = twice.raw({ 0x61, 0, 'a' });
    twice.dictionary({ ascii, ascii, wide, ascii });
    EXPECT_EQ(refusal(twice.list()), Kind::DuplicateKey);
}

TEST(HostileList, what_is_no_text_is_refused)
{
    EXPECT_EQ(refusalOfObject({ 0x51, 0xC3 }), Kind::BadText);
    EXPECT_EQ(refusalOfObject({ 0x51, 0 }), Kind::BadText);
    EXPECT_EQ(refusalOfObject({ 0x61, 0, 0 }), Kind::BadText);
    EXPECT_EQ(refusalOfObject({ 0x61, 0xD8, 0 }), Kind::BadText);
    EXPECT_EQ(refusalOfObject({ 0x61, 0xDC, 0 }), Kind::BadText);
    EXPECT_EQ(refusalOfObject({ 0x62, 0xD8, 0x3D, 0xDE, 0x00 }), Kind::NotAnArchive);
}

TEST(HostileArchive, a_list_of_something_else_is_refused)
{
    EXPECT_EQ(refusal(xmlList("<dict/>")), Kind::NotAnArchive);
    EXPECT_EQ(refusal(xmlList("<dict><key>$archiver</key><string>Other</string></dict>")),
        Kind::NotAnArchive);
    EXPECT_EQ(refusal(xmlList("<dict><key>$archiver</key><true/></dict>")), Kind::NotAnArchive);
    const std::string named = "<dict><key>$archiver</key><string>NSKeyedArchiver</string>";
    EXPECT_EQ(refusal(xmlList(named + "</dict>")), Kind::UnsupportedVersion);
    EXPECT_EQ(refusal(xmlList(named + "<key>$version</key><integer>100001</integer></dict>")),
        Kind::UnsupportedVersion);
    const std::string versioned = named + "<key>$version</key><integer>100000</integer>";
    EXPECT_EQ(refusal(xmlList(versioned + "</dict>")), Kind::MalformedObject);
    EXPECT_EQ(
        refusal(xmlList(versioned + "<key>$top</key><dict/><key>$objects</key><array/></dict>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(xmlList(versioned
                  + "<key>$top</key><dict/><key>$objects</key><array><string>$null</string>"
                    "</array></dict>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(xmlList(versioned + "<key>$top</key><dict><key>root</key>" + xmlUid(0)
                  + "</dict><key>$objects</key><array><true/></array></dict>")),
        Kind::MalformedObject);
}

TEST(HostileArchive, a_uid_that_does_not_exist_is_refused)
{
    EXPECT_EQ(refusal(xmlArchive("<true/>", 2)), Kind::BadReference);
    EXPECT_EQ(refusal(arrayArchive(xmlUid(3))), Kind::BadReference);
    EXPECT_EQ(refusal(arrayArchive(xmlUid(-1))), Kind::BadReference);
    EXPECT_EQ(
        refusal(xmlArchive("<dict><key>$class</key>" + xmlUid(7) + "</dict>")), Kind::BadReference);
}

TEST(HostileArchive, cycles_are_refused)
{
    EXPECT_EQ(refusal(arrayArchive(xmlUid(1))), Kind::Cycle);
    EXPECT_EQ(refusal(objectOfClass("Odd", "<key>me</key>" + xmlUid(1))), Kind::Cycle);
    EXPECT_EQ(refusal(objectOfClass("NSString", "<key>NS.string</key>" + xmlUid(1))), Kind::Cycle);
}

TEST(HostileArchive, depth_is_limited)
{
    const auto nested = [](int depth) {
        std::string objects;
        for (int i = 0; i < depth - 1; ++i)
            objects += "<dict><key>NS.objects</key><array>" + xmlUid(i + 4)
                + "</array><key>$class</key>" + xmlUid(2) + "</dict>";
        return arrayArchive(xmlUid(3), objects + "<true/>");
    };
    EXPECT_EQ(refusal(nested(128)), std::nullopt);
    EXPECT_EQ(refusal(nested(129)), Kind::TooDeep);
    EXPECT_EQ(refusal(nested(20'000)), Kind::TooDeep);
}

TEST(HostileArchive, doubled_uids_are_counted_as_they_expand)
{
    std::string objects;
    for (int i = 0; i < 40; ++i)
        objects += "<dict><key>NS.objects</key><array>" + xmlUid(i + 4) + xmlUid(i + 4)
            + "</array><key>$class</key>" + xmlUid(2) + "</dict>";
    EXPECT_EQ(refusal(arrayArchive(xmlUid(3), objects + "<true/>")), Kind::TooManyObjects);
}

TEST(HostileArchive, too_much_text_is_refused)
{
    const std::string text = "<string>" + std::string((2 << 20) / 2 + 1, 'x') + "</string>";
    EXPECT_EQ(refusal(xmlArchive(text)), Kind::TooLarge);
}

TEST(HostileArchive, objects_that_no_archiver_writes_are_refused)
{
    EXPECT_EQ(refusal(xmlArchive("<dict/>")), Kind::MalformedObject);
    EXPECT_EQ(refusal(xmlArchive("<array/>")), Kind::MalformedObject);
    EXPECT_EQ(refusal(xmlArchive(xmlUid(1))), Kind::MalformedObject);
    EXPECT_EQ(refusal(xmlArchive(xmlClass("NSArray"))), Kind::MalformedObject);
    EXPECT_EQ(refusal(xmlArchive("<dict><key>$class</key>" + xmlUid(0) + "</dict>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(arrayArchive("<true/>")), Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("NSArray", "")), Kind::MalformedObject);
    EXPECT_EQ(
        refusal(objectOfClass("NSArray", "<key>NS.objects</key><true/>")), Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("NSDictionary",
                  "<key>NS.keys</key><array>" + xmlUid(0)
                      + "</array><key>NS.objects</key>"
                        "<array/>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("NSDictionary", "<key>NS.keys</key><array/>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("NSString", "")), Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("NSData", "<key>NS.data</key><string>x</string>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("NSNumber", "")), Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("Odd", "<key>list</key><array><true/></array>")),
        Kind::MalformedObject);
    EXPECT_EQ(refusal(objectOfClass("Odd", "<key>d</key><dict/>")), Kind::MalformedObject);
}

TEST(HostileArchive, a_class_entry_that_contradicts_itself_is_refused)
{
    const auto withClass = [](const std::string& entry) {
        return refusal(xmlArchive(
            "<dict><key>$class</key>" + xmlUid(2) + "</dict><dict>" + entry + "</dict>"));
    };
    EXPECT_EQ(withClass("<key>$classname</key><string>A</string>"), std::nullopt);
    EXPECT_EQ(withClass("<key>$classname</key><true/>"), Kind::MalformedObject);
    EXPECT_EQ(withClass("<key>$classname</key><string>A</string><key>$classes</key><true/>"),
        Kind::MalformedObject);
    EXPECT_EQ(withClass("<key>$classname</key><string>A</string><key>$classes</key>"
                        "<array><string>B</string></array>"),
        Kind::MalformedObject);
    EXPECT_EQ(withClass("<key>$classname</key><string>A</string><key>$classes</key>"
                        "<array><string>A</string><true/></array>"),
        Kind::MalformedObject);
}

TEST(HostileArchive, bytes_that_are_no_text_are_refused)
{
    EXPECT_EQ(
        refusal(objectOfClass("NSString", "<key>NS.bytes</key><data>/w==</data>")), Kind::BadText);
    EXPECT_EQ(
        refusal(objectOfClass("NSString", "<key>NS.bytes</key><data>4ow=</data>")), Kind::BadText);
}

TEST(HostileArchive, a_date_is_refused)
{
    EXPECT_EQ(refusal(xmlArchive("<date>2020-01-01T00:00:00Z</date>")), Kind::BadMarker);
}

} // namespace

} // namespace kestrel::test
