#include "control/InstanceMessageReader.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using State = InstanceMessageReader::State;

InstanceMessage read(const QByteArray& bytes)
{
    InstanceMessageReader reader;
    EXPECT_EQ(reader.add(bytes), State::Complete);
    return reader.message();
}

TEST(InstanceMessage, has_a_mark_a_version_a_kind_a_length_and_a_body)
{
    EXPECT_EQ(InstanceMessage::open({ "/a b.ZKCF", "/ü\n" }).encoded(),
        QByteArray("KSTL\1O\0\0\0\x0F/a b.ZKCF\0/\xC3\xBC\n\0", 25));
    EXPECT_EQ(InstanceMessage::open({}).encoded(), QByteArray("KSTL\1O\0\0\0\0", 10));
    EXPECT_EQ(InstanceMessage().encoded(), QByteArray("KSTL\1D\0\0\0\0", 10));
    EXPECT_EQ(InstanceMessage::refused("No.").encoded(), QByteArray("KSTL\1R\0\0\0\3No.", 13));
}

TEST(InstanceMessage, is_read_from_pieces_of_one_byte)
{
    const QStringList paths { "/a b.ZKCF", "/ü\n" };
    const QByteArray bytes = InstanceMessage::open(paths).encoded();
    InstanceMessageReader reader;
    for (qsizetype i = 0; i < bytes.size() - 1; ++i)
        ASSERT_EQ(reader.add(bytes.sliced(i, 1)), State::Incomplete) << i;
    ASSERT_EQ(reader.add(bytes.last(1)), State::Complete);
    EXPECT_EQ(reader.message().kind, InstanceMessage::Kind::Open);
    EXPECT_EQ(reader.message().paths(), paths);
}

TEST(InstanceMessage, ends_where_its_length_says)
{
    EXPECT_EQ(read(InstanceMessage::refused("No.").encoded() + "more").body, "No.");
}

TEST(InstanceMessage, of_another_form_is_malformed_as_soon_as_the_header_is_there)
{
    const auto problemOf = [](const QByteArray& bytes) {
        InstanceMessageReader reader;
        EXPECT_EQ(reader.add(bytes.first(9)), State::Incomplete);
        EXPECT_EQ(reader.add(bytes.sliced(9)), State::Malformed);
        EXPECT_EQ(reader.add("more"), State::Malformed);
        return std::string(reader.problem());
    };
    EXPECT_EQ(problemOf(QByteArray("KSTM\1O\0\0\0\0", 10)), "This is not a message to Kestrel.");
    EXPECT_EQ(problemOf(QByteArray("KSTL\2O\0\0\0\0", 10)),
        "The running Kestrel speaks version 1 of the protocol.");
    EXPECT_EQ(problemOf(QByteArray("KSTL\1O\xFF\xFF\xFF\xFF", 10)), "The message is too long.");
    EXPECT_EQ(problemOf(QByteArray("KSTL\1O\0\x10\0\1", 10)), "The message is too long.");
}

TEST(InstanceMessage, has_room_for_exactly_the_largest_body)
{
    const QString longest = '/' + QString(InstanceMessage::MaxBodySize - 2, 'x');
    EXPECT_EQ(read(InstanceMessage::open({ longest }).encoded()).paths(), QStringList { longest });
    EXPECT_EQ(InstanceMessage::open({ "/a", longest, "/b" }).paths(), QStringList { "/a" });
}

TEST(InstanceMessage, has_only_absolute_paths_in_UTF_8)
{
    const auto pathsOf = [](const QByteArray& body) {
        return InstanceMessage { InstanceMessage::Kind::Open, body }.paths();
    };
    EXPECT_EQ(pathsOf({}), QStringList());
    EXPECT_EQ(pathsOf(QByteArray("/a\0/b\0", 6)), QStringList({ "/a", "/b" }));
    EXPECT_FALSE(pathsOf(QByteArray("/a\0/b", 5)));
    EXPECT_FALSE(pathsOf(QByteArray("/a\0b\0", 5)));
    EXPECT_FALSE(pathsOf(QByteArray("/a\0\0", 4)));
    EXPECT_FALSE(pathsOf(QByteArray("/\xE4\0", 3)));
}

} // namespace
} // namespace kestrel::test
