#include "platform/linux/autostart/AutostartLoginItem.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class AutostartLoginItemTest : public testing::Test {
protected:
    [[nodiscard]] QByteArray content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    void write(const QByteArray& text) const
    {
        QDir().mkpath(folder.filePath(QStringLiteral("config/autostart")));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text), text.size());
    }

    // Returns the Exec line of the entry for a program with this path.
    [[nodiscard]] QByteArray execLineFor(const QString& program) const
    {
        AutostartLoginItem item(path, program);
        EXPECT_EQ(item.setEnabled(true), LoginItem::Result::Done);
        for (const QByteArray& line : content().split('\n')) {
            if (line.startsWith("Exec="))
                return line;
        }
        return "(no line)";
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("config/autostart/kestrel.desktop"));
    AutostartLoginItem item { path, QStringLiteral("/usr/bin/kestrel") };
};

TEST_F(AutostartLoginItemTest, is_off_until_it_is_asked_for)
{
    EXPECT_TRUE(item.isAvailable());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("config"))));
}

TEST_F(AutostartLoginItemTest, switching_it_on_writes_an_entry_that_starts_this_program)
{
    EXPECT_EQ(item.setEnabled(true), LoginItem::Result::Done);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(content(),
        "[Desktop Entry]\n"
        "Type=Application\n"
        "Name=ZENTA Kestrel\n"
        "Comment=Links the ZENTA console with Pro Tools\n"
        "Exec=\"/usr/bin/kestrel\"\n"
        "TryExec=/usr/bin/kestrel\n"
        "Icon=com.holvik.kestrel\n"
        "StartupNotify=false\n"
        "Terminal=false\n");
}

TEST_F(AutostartLoginItemTest, switching_it_off_removes_the_entry)
{
    ASSERT_EQ(item.setEnabled(true), LoginItem::Result::Done);
    EXPECT_EQ(item.setEnabled(false), LoginItem::Result::Done);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(AutostartLoginItemTest, switching_off_what_is_off_is_done_already)
{
    EXPECT_EQ(item.setEnabled(false), LoginItem::Result::Done);
}

TEST_F(AutostartLoginItemTest, an_entry_that_the_desktop_has_switched_off_counts_as_off)
{
    write("[Desktop Entry]\nExec=kestrel\n");
    EXPECT_TRUE(item.isEnabled());
    write("[Desktop Entry]\nExec=kestrel\nHidden=true\n");
    EXPECT_FALSE(item.isEnabled());
    write("[Desktop Entry]\nExec=kestrel\nX-GNOME-Autostart-enabled = false\n");
    EXPECT_FALSE(item.isEnabled());
    write("[Desktop Entry]\nExec=kestrel\nHidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_TRUE(item.isEnabled());
}

TEST_F(AutostartLoginItemTest, switching_it_on_takes_the_place_of_an_entry_that_is_switched_off)
{
    write("[Desktop Entry]\nExec=kestrel\nHidden=true\n");
    EXPECT_EQ(item.setEnabled(true), LoginItem::Result::Done);
    EXPECT_TRUE(item.isEnabled());
}

TEST_F(AutostartLoginItemTest, unusual_characters_in_the_path_reach_the_program_as_they_are)
{
    EXPECT_EQ(execLineFor(QStringLiteral("/opt/My Apps/kestrel")), "Exec=\"/opt/My Apps/kestrel\"");
    EXPECT_EQ(execLineFor(QStringLiteral("/opt/100%/kestrel")), "Exec=\"/opt/100%%/kestrel\"");
    // A backslash quotes each character, and the escaping of the value doubles the backslash.
    EXPECT_EQ(execLineFor(QStringLiteral("/opt/a\"$`b")), R"(Exec="/opt/a\\"\\$\\`b")");
    EXPECT_EQ(execLineFor(QStringLiteral("/opt/a\\b")), R"(Exec="/opt/a\\\\b")");
}

TEST_F(AutostartLoginItemTest, a_folder_that_cannot_be_made_is_a_failure)
{
    QFile obstacle(folder.filePath(QStringLiteral("config")));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    EXPECT_EQ(item.setEnabled(true), LoginItem::Result::Failed);
    EXPECT_FALSE(item.isEnabled());
}

TEST_F(AutostartLoginItemTest, an_entry_that_cannot_be_removed_is_a_failure)
{
    ASSERT_TRUE(QDir().mkpath(path)); // a folder of that name
    EXPECT_EQ(item.setEnabled(false), LoginItem::Result::Failed);
}

TEST_F(AutostartLoginItemTest, names_the_program_of_its_entry_when_it_is_missing)
{
    EXPECT_EQ(item.missingProgram(), "") << "without an entry";
    for (const QString& program : { QStringLiteral("/opt/gone/kestrel"),
             QStringLiteral("/opt/a\\b\nc/kestrel"), folder.path() + "/none" }) {
        AutostartLoginItem other(path, program);
        ASSERT_EQ(other.setEnabled(true), LoginItem::Result::Done);
        EXPECT_EQ(item.missingProgram(), program);
    }
    AutostartLoginItem shell(path, QStringLiteral("/bin/sh"));
    ASSERT_EQ(shell.setEnabled(true), LoginItem::Result::Done);
    EXPECT_EQ(item.missingProgram(), "");
    write("[Desktop Entry]\nExec=kestrel\n");
    EXPECT_EQ(item.missingProgram(), "");
}

} // namespace
} // namespace kestrel::test
