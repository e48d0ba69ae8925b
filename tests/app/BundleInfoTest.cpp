#include "app/BundleInfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

QString write(const QTemporaryDir& folder, const QByteArray& content)
{
    QFile file(folder.filePath(QStringLiteral("Info.plist")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return file.fileName();
}

TEST(AboutText, with_a_driver_names_both_versions_and_the_drivers_copyright)
{
    EXPECT_EQ(aboutText(BundleInfo { "2.1", "Copyright Driver" },
                  BundleInfo { "1.0", "Copyright Application" }),
        QStringLiteral("V2.1\n(Console:V1.0)\n\nCopyright Driver"));
}

TEST(AboutText, a_driver_without_a_copyright_leaves_the_place_empty)
{
    EXPECT_EQ(aboutText(BundleInfo { "2.1", "" }, BundleInfo { "1.0", "Copyright" }),
        QStringLiteral("V2.1\n(Console:V1.0)\n\n"));
}

TEST(AboutText, without_a_driver_ends_in_two_line_feeds)
{
    EXPECT_EQ(aboutText({}, BundleInfo { "1.0", "Copyright Application" }),
        QStringLiteral("(Console:V1.0)\n\nCopyright Application\n\n"));
}

TEST(AboutText, texts_with_placeholders_stay_as_they_are)
{
    EXPECT_EQ(aboutText(BundleInfo { "%2", "%1" }, BundleInfo { "%3", "" }),
        QStringLiteral("V%2\n(Console:V%3)\n\n%1"));
}

TEST(BundleInfo, reads_version_and_copyright)
{
    const QTemporaryDir folder;
    const auto info = BundleInfo::read(write(folder,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
        "<key>CFBundleShortVersionString</key><string>3.4</string>"
        "<key>CFBundleVersion</key><integer>7</integer>"
        "<key>NSHumanReadableCopyright</key><string>© Somebody</string>"
        "</dict></plist>"));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->shortVersion, QStringLiteral("3.4"));
    EXPECT_EQ(info->copyright, QString::fromUtf8("© Somebody"));
}

TEST(BundleInfo, values_of_other_types_count_as_missing)
{
    const QTemporaryDir folder;
    const auto info = BundleInfo::read(write(folder,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
        "<key>CFBundleShortVersionString</key><integer>3</integer></dict></plist>"));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->shortVersion, QString());
    EXPECT_EQ(info->copyright, QString());
}

TEST(BundleInfo, a_list_that_cannot_be_read_gives_none)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(BundleInfo::read(folder.filePath(QStringLiteral("missing"))));
    EXPECT_FALSE(BundleInfo::read(write(folder, "no property list")));
    EXPECT_FALSE(BundleInfo::read(write(folder, "")));
    EXPECT_FALSE(BundleInfo::read(write(folder,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><string>x</string>"
        "</plist>")));
}

// A folder that stands for the root of a file system with the installed console driver.
class System {
public:
    static constexpr const char* Driver = "Library/Audio/MIDI Drivers/HolvikZentaMIDI.plugin";

    void installDriver(const QByteArray& list)
    {
        const QString contents = m_root.filePath(Driver) + QStringLiteral("/Contents");
        EXPECT_TRUE(QDir().mkpath(contents));
        QFile file(contents + QStringLiteral("/Info.plist"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(list), list.size());
    }
    void putFileInPlaceOfDriver()
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(m_root.filePath(Driver)).path()));
        QFile file(m_root.filePath(Driver));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void makeEmptyDriver() { EXPECT_TRUE(QDir().mkpath(m_root.filePath(Driver))); }
    [[nodiscard]] QString aboutText() const { return aboutInstalled(m_root.path()); }

private:
    QTemporaryDir m_root;
};

const QString WithoutDriver
    = QStringLiteral("(Console:V%1)\n\nCopyright © 2026 The Kestrel maintainers\n\n")
          .arg(QStringLiteral(KESTREL_VERSION));
const QString WithSilentDriver
    = QStringLiteral("V\n(Console:V%1)\n\n").arg(QStringLiteral(KESTREL_VERSION));

TEST(AboutInstalled, reads_the_driver_in_its_place)
{
    System system;
    system.installDriver("<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
                         "<key>CFBundleShortVersionString</key><string>2.1</string>"
                         "<key>NSHumanReadableCopyright</key><string>© Holvik</string>"
                         "</dict></plist>");
    EXPECT_EQ(system.aboutText(),
        QStringLiteral("V2.1\n(Console:V%1)\n\n© Holvik").arg(QStringLiteral(KESTREL_VERSION)));
}

TEST(AboutInstalled, a_missing_driver_and_a_file_in_its_place_are_none)
{
    System system;
    EXPECT_EQ(system.aboutText(), WithoutDriver);
    system.putFileInPlaceOfDriver();
    EXPECT_EQ(system.aboutText(), WithoutDriver);
}

TEST(AboutInstalled, a_driver_whose_list_cannot_be_read_is_there_but_says_nothing)
{
    System empty;
    empty.makeEmptyDriver();
    EXPECT_EQ(empty.aboutText(), WithSilentDriver);
    System damaged;
    damaged.installDriver("bplist00 and no more");
    EXPECT_EQ(damaged.aboutText(), WithSilentDriver);
}

} // namespace
} // namespace kestrel::test
