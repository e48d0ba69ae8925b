#include "platform/linux/defaults/FileDefaultsStore.h"

#include "archive/AtomicFile.h"
#include "archive/FileLock.h"
#include "platform/StoredDefaults.h"
#include "tests/archive/Refusal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel::test {

namespace {

using Data = DefaultsStore::Bytes;

class FileDefaults : public testing::Test {
protected:
    QString path() const { return m_folder.filePath("config/defaults.plist"); }
    void write(std::string_view bytes) const
    {
        QDir(m_folder.path()).mkdir("config");
        ASSERT_TRUE(AtomicFile::write(path(), viewOf(bytes)));
    }
    QByteArray content(const QString& suffix = {}) const
    {
        QFile file(path() + suffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    std::string xmlContent() const
    {
        const QByteArray bytes = content();
        const PropertyList list = PropertyList::fromBytes(kestrel::viewOf(bytes));
        char* xml = nullptr;
        std::uint32_t size = 0;
        plist_to_xml(list.root(), &xml, &size);
        std::string text(xml, size);
        plist_to_xml_free(xml);
        return text;
    }
    std::optional<Data> stored(std::string_view key) const
    {
        return FileDefaultsStore(path()).data(key);
    }

    QTemporaryDir m_folder;
};

TEST_F(FileDefaults, a_file_that_does_not_exist_holds_nothing)
{
    FileDefaultsStore store(path());
    EXPECT_EQ(store.data("a"), std::nullopt);
    EXPECT_TRUE(store.synchronise());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(FileDefaults, a_value_counts_at_once_and_is_on_disk_after_synchronising)
{
    FileDefaultsStore store(path());
    store.setData("a", Data { 1, 2 });
    EXPECT_EQ(store.data("a"), (Data { 1, 2 }));
    EXPECT_EQ(stored("a"), std::nullopt);
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(stored("a"), (Data { 1, 2 }));
    EXPECT_EQ(store.data("a"), (Data { 1, 2 }));
}

TEST_F(FileDefaults, an_empty_value_is_a_value)
{
    FileDefaultsStore store(path());
    store.setData("a", {});
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(stored("a"), Data());
}

TEST_F(FileDefaults, two_stores_keep_what_the_other_wrote)
{
    FileDefaultsStore one(path());
    FileDefaultsStore other(path());
    one.setData("one", Data { 1 });
    other.setData("other", Data { 2 });
    EXPECT_TRUE(one.synchronise());
    EXPECT_TRUE(other.synchronise());
    EXPECT_EQ(stored("one"), Data { 1 });
    EXPECT_EQ(stored("other"), Data { 2 });
    EXPECT_TRUE(one.synchronise());
    EXPECT_EQ(one.data("other"), Data { 2 });
}

TEST_F(FileDefaults, a_key_that_was_not_set_again_is_not_written_again)
{
    FileDefaultsStore one(path());
    one.setData("key", Data { 1 });
    EXPECT_TRUE(one.synchronise());
    FileDefaultsStore other(path());
    other.setData("key", Data { 2 });
    EXPECT_TRUE(other.synchronise());
    one.setData("else", Data { 3 });
    EXPECT_TRUE(one.synchronise());
    EXPECT_EQ(stored("key"), Data { 2 });
}

TEST_F(FileDefaults, values_of_other_kinds_are_no_data_and_are_kept)
{
    write(xmlList("<dict><key>n</key><integer>-7</integer><key>t</key><string>⌘</string>"
                  "<key>when</key><date>2020-01-01T00:00:00Z</date><key>list</key><array><true/>"
                  "<real>0.1</real></array></dict>"));
    FileDefaultsStore store(path());
    EXPECT_EQ(store.data("n"), std::nullopt);
    store.setData("a", Data { 1 });
    EXPECT_TRUE(store.synchronise());
    const std::string text = xmlContent();
    for (const char* part : { "<integer>-7</integer>", "<string>⌘</string>",
             "<date>2020-01-01T00:00:00Z</date>", "<true/>", "<real>0.1", "<key>a</key>" })
        EXPECT_NE(text.find(part), text.npos) << part;
}

TEST_F(FileDefaults, a_value_of_another_kind_is_kept_aside_before_it_is_replaced)
{
    write(xmlList("<dict><key>a</key><string>mine</string></dict>"));
    FileDefaultsStore store(path());
    EXPECT_EQ(store.data("a"), std::nullopt);
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(xmlContent().find("damaged"), std::string::npos) << "nothing replaces it yet";
    store.setData("a", Data { 1 });
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(stored("a"), Data { 1 });
    store.setData("a", Data { 2 });
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(stored("a"), Data { 2 });
    EXPECT_NE(xmlContent().find("<key>a.damaged</key>\n\t<string>mine</string>"), std::string::npos)
        << xmlContent();
}

TEST_F(FileDefaults, a_damaged_file_is_kept_aside_before_anything_is_written)
{
    for (const std::string& damage : { std::string("bplist00 cut off"), std::string("<plist>"),
             xmlList("<array/>"), std::string() }) {
        write(damage);
        FileDefaultsStore store(path());
        EXPECT_EQ(store.data("a"), std::nullopt);
        EXPECT_TRUE(store.synchronise());
        EXPECT_EQ(content().toStdString(), damage);
        store.setData("a", Data { 1 });
        EXPECT_TRUE(store.synchronise());
        EXPECT_EQ(content(".damaged").toStdString(), damage);
        EXPECT_EQ(stored("a"), Data { 1 });
    }
}

TEST_F(FileDefaults, a_file_that_would_take_seconds_to_write_is_damaged)
{
    std::string elements;
    for (int i = 0; i < 60'000; ++i)
        elements += "<integer>" + std::to_string(i) + "</integer>";
    const std::string large = xmlList("<dict><key>a</key><array>" + elements + "</array></dict>");
    write(large);
    FileDefaultsStore store(path());
    store.setData("b", Data { 1 });
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(content(".damaged").toStdString(), large);
    EXPECT_EQ(stored("b"), Data { 1 });
}

TEST_F(FileDefaults, a_fifo_is_neither_waited_for_nor_replaced)
{
    QDir(m_folder.path()).mkdir("config");
    const QByteArray name = path().toLocal8Bit();
    ASSERT_EQ(::mkfifo(name.constData(), 0600), 0);
    FileDefaultsStore store(path());
    EXPECT_EQ(store.data("a"), std::nullopt);
    store.setData("a", Data { 1 });
    EXPECT_FALSE(store.synchronise());
    struct stat status { };
    ASSERT_EQ(::lstat(name.constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(FileDefaults, a_link_to_a_file_that_does_not_exist_yet_is_stored_through)
{
    QDir(m_folder.path()).mkdir("config");
    ASSERT_TRUE(QFile::link(m_folder.filePath("elsewhere.plist"), path()));
    FileDefaultsStore store(path());
    EXPECT_EQ(store.problem(), "");
    store.setData("a", Data { 1 });
    EXPECT_TRUE(store.synchronise());
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_TRUE(QFile::exists(m_folder.filePath("elsewhere.plist")));
    EXPECT_EQ(stored("a"), Data { 1 });
}

TEST_F(FileDefaults, a_failure_says_why_until_it_is_over)
{
    FileDefaultsStore store(path(), std::chrono::milliseconds(0));
    EXPECT_EQ(store.problem(), "");
    store.setData("a", Data { 1 });
    QDir(m_folder.path()).mkdir("config");
    {
        const FileLock lock(path() + ".lock", std::chrono::milliseconds(0));
        EXPECT_FALSE(store.synchronise());
        EXPECT_EQ(store.problem(), "The file of the defaults cannot be locked");
    }
    ASSERT_TRUE(QFile::link(path(), path())); // leads to itself
    EXPECT_FALSE(store.synchronise());
    EXPECT_EQ(store.problem(), "Too many levels of symbolic links");
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QDir().mkdir(path()));
    EXPECT_FALSE(store.synchronise());
    EXPECT_EQ(store.problem(), "The file of the defaults cannot be read");
    EXPECT_EQ(FileDefaultsStore(path()).problem(), store.problem()) << "known at the start";
    ASSERT_TRUE(QDir().rmdir(path()));
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(store.problem(), "");
}

TEST_F(FileDefaults, what_another_process_has_stored_meanwhile_is_kept_aside)
{
    FileDefaultsStore one(path());
    one.setData("key", Data { 1 });
    ASSERT_TRUE(one.synchronise());
    FileDefaultsStore other(path());
    EXPECT_EQ(other.data("key"), Data { 1 });
    other.setData("key", Data { 2 });
    ASSERT_TRUE(other.synchronise());
    EXPECT_EQ(stored("key.replaced"), std::nullopt) << "it knew what it replaced";

    ASSERT_TRUE(one.synchronise()) << "reading the file again is no knowledge of the value";
    one.setData("key", Data { 3 });
    ASSERT_TRUE(one.synchronise());
    EXPECT_EQ(stored("key"), Data { 3 });
    EXPECT_EQ(stored("key.replaced"), Data { 2 });
    one.setData("key", Data { 4 });
    ASSERT_TRUE(one.synchronise());
    EXPECT_EQ(stored("key.replaced"), Data { 2 });
    other.setData("key", Data { 4 });
    ASSERT_TRUE(other.synchronise());
    EXPECT_EQ(stored("key.replaced"), Data { 2 }) << "nothing is lost when both are the same";
}

TEST_F(FileDefaults, a_hostile_file_is_damaged)
{
    std::string bytes = "bplist00";
    bytes += std::string("\xA1\x00", 2);
    bytes += '\x08'; // the offset table: the one object contains itself
    std::string trailer(32, '\0');
    trailer[6] = trailer[7] = trailer[15] = 1;
    trailer[31] = 10;
    write(bytes + trailer);
    EXPECT_EQ(refusal(bytes + trailer), Kind::Cycle);
    FileDefaultsStore store(path());
    store.setData("a", Data { 1 });
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(content(".damaged").toStdString(), bytes + trailer);
}

TEST_F(FileDefaults, what_cannot_be_read_is_not_replaced)
{
    QDir(m_folder.path())
        .mkpath("config/defaults.plist"); // a folder, which root cannot read either
    FileDefaultsStore store(path());
    store.setData("a", Data { 1 });
    EXPECT_FALSE(store.synchronise());
    EXPECT_TRUE(QFileInfo(path()).isDir());
    EXPECT_EQ(store.data("a"), Data { 1 });
}

TEST_F(FileDefaults, what_could_not_be_read_at_first_is_kept_aside_before_it_is_replaced)
{
    QDir(m_folder.path()).mkpath("config/defaults.plist"); // unreadable …
    FileDefaultsStore store(path());
    ASSERT_TRUE(QDir().rmdir(path()));
    FileDefaultsStore other(path());
    other.setData("a", Data { 1 });
    ASSERT_TRUE(other.synchronise()); // … and then the file exists
    QFile before(path());
    ASSERT_TRUE(before.open(QIODevice::ReadOnly));
    store.setData("a", Data { 2 });
    ASSERT_TRUE(store.synchronise());
    EXPECT_EQ(stored("a"), Data { 2 });
    QFile aside(path() + ".damaged");
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), before.readAll());
}

// What a store says that finds this file of another user, with a value under "a". Root may read and
// write every file, so root tries it as somebody else, and others take the permission from
// themselves.
struct OthersFile {
    const char* name;
    const char* suffix;
    mode_t mode; // for root, whose file it is
    mode_t ownMode;
    bool isRead;
    std::string problem; // its beginning

    // For the names of the tests.
    friend void PrintTo(const OthersFile& file, std::ostream* out) { *out << file.name; }
};

class FileDefaultsOfAnother : public FileDefaults, public testing::WithParamInterface<OthersFile> {
protected:
    void giveAway() const
    {
        const QByteArray file = (path() + GetParam().suffix).toLocal8Bit();
        if (!*GetParam().suffix) {
            ASSERT_TRUE(QFile::remove(path() + ".lock"));
        }
        const bool isRoot = geteuid() == 0;
        ASSERT_EQ(chmod(file.constData(), isRoot ? GetParam().mode : GetParam().ownMode), 0);
        if (!isRoot)
            return;
        for (const QString& folder : { m_folder.path(), m_folder.filePath("config") })
            ASSERT_EQ(chown(qPrintable(folder), Nobody, Nobody), 0);
    }
    // Empty if the store does what it should.
    [[nodiscard]] std::string fault() const
    {
        FileDefaultsStore store(path());
        if (store.data("a").has_value() != GetParam().isRead)
            return "the value is " + std::string(GetParam().isRead ? "not " : "") + "read";
        store.setData("a", Data { 2 });
        if (store.synchronise())
            return "it is written";
        return store.problem().starts_with(GetParam().problem) ? "" : store.problem();
    }

    static constexpr uid_t Nobody = 65534;
};

TEST_P(FileDefaultsOfAnother, is_neither_replaced_nor_passed_over_in_silence)
{
    FileDefaultsStore store(path());
    store.setData("a", Data { 1 });
    ASSERT_TRUE(store.synchronise());
    const QByteArray before = content();
    giveAway();
    const auto attempt = [this] {
        if (geteuid() == 0 && setuid(Nobody) != 0)
            _exit(2);
        const std::string wrong = fault();
        std::fputs(wrong.c_str(), stderr);
        _exit(wrong.empty() ? 0 : 1);
    };
    EXPECT_EXIT(attempt(), testing::ExitedWithCode(0), "^$");
    if (geteuid() == 0) {
        EXPECT_EQ(content(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(, FileDefaultsOfAnother,
    testing::Values(OthersFile { "unreadable", "", 0600, 0000, false,
                        "The file of the defaults cannot be read: Permission denied" },
        OthersFile { "readable", "", 0644, 0444, true, "Existing file " },
        OthersFile { "lock", ".lock", 0600, 0000, true,
            "The file of the defaults cannot be locked: Permission denied" }),
    [](const auto& info) { return info.param.name; });

TEST_F(FileDefaults, a_writer_that_never_ends_is_not_waited_for)
{
    FileDefaultsStore store(path(), std::chrono::milliseconds(50));
    store.setData("a", Data { 1 });
    ASSERT_TRUE(store.synchronise());
    store.setData("a", Data { 2 });
    {
        const FileLock lock(path() + ".lock", std::chrono::milliseconds(0));
        ASSERT_TRUE(lock.isHeld());
        EXPECT_FALSE(store.synchronise());
        EXPECT_EQ(stored("a"), Data { 1 });
    }
    EXPECT_TRUE(store.synchronise());
    EXPECT_EQ(stored("a"), Data { 2 });
}

TEST_F(FileDefaults, stands_in_the_users_folder_of_configuration)
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path()));
    EXPECT_EQ(FileDefaultsStore::standardPath(), m_folder.filePath("com.holvik.kestrel.plist"));
    const auto store = openStoredDefaults().store;
    store->setData("a", Data { 1 });
    EXPECT_TRUE(store->synchronise());
    EXPECT_TRUE(QFile::exists(m_folder.filePath("com.holvik.kestrel.plist")));
    qunsetenv("XDG_CONFIG_HOME");
}

} // namespace

} // namespace kestrel::test
