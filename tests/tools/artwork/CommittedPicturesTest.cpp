#include "tests/support/ApprovedPicture.h"
#include "tools/artwork/Pictures.h"

#include <QDir>
#include <QDirIterator>
#include <QImage>

#include <gtest/gtest.h>

namespace kestrel::test {
using namespace artwork;

namespace {

// Qt blends with the vector unit that the processor has, and these round the last bit differently.
constexpr int Tolerance = 2;

const QDir resources(QStringLiteral(KESTREL_RESOURCES));

QStringList sortedPaths()
{
    QStringList paths;
    for (const Picture& picture : allPictures())
        paths << picture.path;
    paths.sort();
    return paths;
}

TEST(CommittedPictures, are_what_the_program_draws)
{
    for (const Picture& picture : allPictures()) {
        SCOPED_TRACE(picture.path.toStdString());
        const QImage committed(resources.filePath(picture.path));
        const QImage drawn = picture.draw();
        ASSERT_FALSE(committed.isNull());
        ASSERT_EQ(drawn.size(), committed.size());
        EXPECT_EQ(drawn.hasAlphaChannel(), committed.hasAlphaChannel());
        EXPECT_LE(largestDifference(drawn, committed), Tolerance);
    }
}

TEST(CommittedPictures, are_all_drawn_by_the_program)
{
    QStringList found;
    for (const char* folder : { "images", "icons" }) {
        QDirIterator files(
            resources.filePath(QLatin1String(folder)), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            found << resources.relativeFilePath(files.next());
    }
    found.sort();
    EXPECT_EQ(found, sortedPaths());
}

TEST(PackedPictures, hold_every_image_under_its_name_without_being_registered_by_hand)
{
    for (const QString& path : sortedPaths().filter(QStringLiteral("images/"))) {
        SCOPED_TRACE(path.toStdString());
        const QImage committed(resources.filePath(path));
        const QImage packed(QStringLiteral(":/") + path);
        ASSERT_FALSE(packed.isNull());
        EXPECT_EQ(packed, committed);
    }
}

// Some drawing engines take no higher pictures.
TEST(CommittedPictures, are_at_most_8192_pixels_high)
{
    for (const QString& path : sortedPaths())
        EXPECT_LE(QImage(resources.filePath(path)).height(), 8192) << path.toStdString();
}

TEST(PackedPictures, double_resolution_is_exactly_twice_the_size)
{
    for (const QString& path : sortedPaths().filter(QStringLiteral("@2x"))) {
        SCOPED_TRACE(path.toStdString());
        const QImage doubled(resources.filePath(path));
        QString single = path;
        const QImage natural(resources.filePath(single.remove(QStringLiteral("@2x"))));
        EXPECT_EQ(doubled.size(), natural.size() * 2);
    }
}

} // namespace
} // namespace kestrel::test
