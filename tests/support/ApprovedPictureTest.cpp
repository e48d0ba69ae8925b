#include "tests/support/ApprovedPicture.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using Verdict = ApprovedFolder::Verdict;

class ApprovedPicturesOf : public testing::Test {
protected:
    static QImage picture(int grey)
    {
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(qRgb(grey, grey, grey));
        return image;
    }
    void approve(const QString& path, int grey) const
    {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(QFileInfo(path).path()));
        ASSERT_TRUE(picture(grey).save(m_folder.filePath(path)));
    }
    [[nodiscard]] ApprovedFolder on(const QString& kernel) const
    {
        return { m_folder.path(), kernel };
    }

    QTemporaryDir m_folder;
};

TEST_F(ApprovedPicturesOf, each_system_are_the_same_where_there_is_no_text)
{
    approve("panel/knobs.png", 100);
    for (const char* kernel : { "linux", "darwin" }) {
        const auto verdict = [&](const QString& name, int grey) {
            return on(kernel).compare(name, picture(grey), 8, Fonts::None);
        };
        EXPECT_EQ(verdict("panel/knobs", 108), Verdict::Same) << kernel;
        EXPECT_EQ(verdict("panel/knobs", 109), Verdict::Different) << kernel;
        EXPECT_EQ(verdict("panel/lamps", 100), Verdict::Different) << kernel;
    }
}

TEST_F(ApprovedPicturesOf, Linux_are_not_those_of_another_system_where_text_is_shown)
{
    approve("setup/empty.png", 100);
    const auto verdict = [&](const QString& kernel, const QString& name, int grey) {
        return on(kernel).compare(name, picture(grey), 8, Fonts::OfTheSystem);
    };
    EXPECT_EQ(verdict("linux", "setup/empty", 100), Verdict::Same);
    EXPECT_EQ(verdict("linux", "setup/empty", 200), Verdict::Different);
    EXPECT_EQ(verdict("linux", "setup/missing", 100), Verdict::Different);
    EXPECT_EQ(verdict("darwin", "setup/empty", 100), Verdict::NoneForThisSystem);

    approve("darwin/setup/empty.png", 200);
    EXPECT_EQ(verdict("darwin", "setup/empty", 200), Verdict::Same);
    EXPECT_EQ(verdict("darwin", "setup/empty", 100), Verdict::Different);
    EXPECT_EQ(verdict("darwin", "setup/missing", 100), Verdict::Different);
    EXPECT_EQ(verdict("linux", "setup/empty", 100), Verdict::Same);
}

TEST_F(ApprovedPicturesOf, another_size_are_different)
{
    approve("panel/knobs.png", 100);
    EXPECT_EQ(on("linux").compare("panel/knobs", picture(100).copy(0, 0, 4, 2), 8, Fonts::None),
        Verdict::Different);
}

} // namespace
} // namespace kestrel::test
