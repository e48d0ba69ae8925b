#include "tools/artwork/IconSet.h"

#include <QFile>
#include <QImage>
#include <QtEndian>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {
using namespace artwork;

namespace {

using testing::ElementsAre;

QByteArray picture(const QString& name, int edge)
{
    QFile file(QStringLiteral(KESTREL_SOURCE "/resources/icons/%1-%2.png").arg(name).arg(edge));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return file.readAll();
}

using Entries = std::vector<std::pair<std::string, QByteArray>>;

// The entries of a container; none where its lengths do not add up.
Entries entriesOf(const QByteArray& set)
{
    constexpr qsizetype Header = 8;
    const auto length = [&set](qsizetype at) {
        return static_cast<qsizetype>(qFromBigEndian<quint32>(set.constData() + at + 4));
    };
    if (set.size() < Header || !set.startsWith("icns") || length(0) != set.size())
        return {};
    Entries entries;
    for (qsizetype at = Header; at < set.size(); at += length(at)) {
        if (set.size() - at < Header || length(at) < Header || length(at) > set.size() - at)
            return {};
        entries.emplace_back(
            set.mid(at, 4).toStdString(), set.mid(at + Header, length(at) - Header));
    }
    return entries;
}

std::optional<QByteArray> setOf(const QString& name)
{
    return iconSet([&name](int edge) { return picture(name, edge); });
}

// Red, green and blue one after the other, as run-length coding without repetitions has them.
QByteArray withoutRunLengths(const QByteArray& coded)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < coded.size();) {
        const int length = static_cast<unsigned char>(coded[i]);
        if (length >= 128)
            return {};
        bytes += coded.mid(i + 1, length + 1);
        i += length + 2;
    }
    return bytes;
}

TEST(IconSet, holds_every_size_that_the_system_shows)
{
    for (const char* name : { "kestrel", "zkcf" }) {
        const auto set = setOf(QLatin1String(name));
        ASSERT_TRUE(set);
        std::vector<std::string> types;
        for (const auto& [type, data] : entriesOf(*set))
            types.push_back(type);
        EXPECT_THAT(types,
            ElementsAre("is32", "s8mk", "il32", "l8mk", "ic07", "ic08", "ic09", "ic11", "ic12",
                "ic13", "ic14", "ic10"));
    }
}

TEST(IconSet, pictures_from_128_pixels_on_and_those_for_high_resolution_are_the_files_themselves)
{
    const auto set = setOf(QStringLiteral("kestrel"));
    ASSERT_TRUE(set);
    const std::vector<std::pair<std::string, int>> edges { { "ic07", 128 }, { "ic08", 256 },
        { "ic09", 512 }, { "ic11", 32 }, { "ic12", 64 }, { "ic13", 256 }, { "ic14", 512 },
        { "ic10", 1024 } };
    const Entries entries = entriesOf(*set);
    ASSERT_EQ(entries.size(), edges.size() + 4);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        EXPECT_EQ(entries[i + 4].first, edges[i].first);
        EXPECT_EQ(entries[i + 4].second, picture(QStringLiteral("kestrel"), edges[i].second));
    }
}

TEST(IconSet, the_two_smallest_are_pixels_with_a_mask)
{
    const auto set = setOf(QStringLiteral("kestrel"));
    ASSERT_TRUE(set);
    const Entries entries = entriesOf(*set);
    for (const std::size_t first : { 0U, 2U }) {
        const int edge = first == 0 ? 16 : 32;
        const QImage image = QImage::fromData(picture(QStringLiteral("kestrel"), edge));
        const QByteArray colours = withoutRunLengths(entries[first].second);
        const QByteArray& mask = entries[first + 1].second;
        const qsizetype count = qsizetype { edge } * edge;
        ASSERT_EQ(colours.size(), 3 * count);
        ASSERT_EQ(mask.size(), count);
        for (qsizetype i = 0; i < count; ++i) {
            const auto at = [i](const QByteArray& bytes, qsizetype offset) {
                return static_cast<unsigned char>(bytes[offset + i]);
            };
            ASSERT_EQ(
                qRgba(at(colours, 0), at(colours, count), at(colours, 2 * count), at(mask, 0)),
                image.pixel(static_cast<int>(i) % edge, static_cast<int>(i) / edge))
                << "pixel " << i;
        }
    }
}

TEST(IconSet, is_refused_where_a_picture_has_another_size_or_is_none)
{
    EXPECT_FALSE(iconSet(
        [](int edge) { return picture(QStringLiteral("kestrel"), edge == 512 ? 256 : edge); }));
    EXPECT_FALSE(iconSet([](int edge) {
        return edge == 16 ? QByteArray("no picture") : picture(QStringLiteral("kestrel"), edge);
    }));
}

} // namespace
} // namespace kestrel::test
