#include "assign/UserAssignFile.h"
#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/Patience.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;
using stage::milliseconds;
using testing::AnyOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

constexpr milliseconds StartTimeout { 10000 };
constexpr milliseconds StoringTimeout { 10000 };

std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

void fill(const fs::path& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

class Storage : public testing::Test {
protected:
    [[nodiscard]] fs::path config(const std::string& name) const
    {
        return studio.studio.configFolder() / name;
    }
    [[nodiscard]] fs::path defaults() const { return config("com.holvik.kestrel.plist"); }
    [[nodiscard]] fs::path recovery() const { return config("com.holvik.kestrel.recovery.ZKCF"); }
    [[nodiscard]] fs::path journal() const
    {
        for (const auto& entry : fs::directory_iterator(studio.studio.home() / "runtime")) {
            if (entry.path().filename().string().starts_with("kestrel-held-keys"))
                return entry.path();
        }
        return {};
    }

    // Writes a set whose button 1 has this title.
    [[nodiscard]] std::string writeSet(const QString& title) const
    {
        UserAssignFile set;
        set.initShortcutArray();
        set.setShortcutTitle(title, ArchiveValue(1));
        const auto image = set.fileImage();
        const fs::path path = studio.studio.home() / "set.ZKCF";
        fill(path, { image.begin(), image.end() });
        return path.string();
    }
    [[nodiscard]] std::string storedLine() const // of button 1
    {
        const auto tool = studio.studio.start("kestrelctl", { "show" });
        return tool->waitForLineWith("1 ", StoringTimeout).value_or("");
    }
    // Opens a file in the running program and returns when its set has become live.
    void open(const std::string& file)
    {
        EXPECT_EQ(studio.studio.start("kestrel", { file })->wait(StoringTimeout), 0);
        EXPECT_TRUE(stage::comesTrue([this] { return fs::exists(recovery()); }, StoringTimeout));
    }

    RunningStudio studio { stage::Studio::Options { .tray = false } };
};

TEST_F(Storage, a_set_that_became_live_outlives_a_kill)
{
    studio.studio.assign({ "1", "--title", "Before" });
    studio.startKestrel();
    const std::string before = contentOf(defaults());
    open(writeSet(QStringLiteral("After")));
    EXPECT_EQ(contentOf(defaults()), before) << "they change only at the end";
    studio.kestrel->signal(SIGKILL);
    ASSERT_EQ(studio.kestrel->wait(StoringTimeout), 128 + SIGKILL);

    studio.startKestrel();
    EXPECT_EQ(studio.terminateKestrel(), 0);
    EXPECT_FALSE(fs::exists(recovery()));
    EXPECT_EQ(storedLine(), "1 \"After\"");
}

TEST_F(Storage, a_disk_that_is_full_at_the_end_keeps_the_old_content)
{
    studio.studio.assign({ "1", "--title", "Before" });
    studio.startKestrel();
    const std::string before = contentOf(defaults());
    const rlimit nothing { 0, 0 };
    ASSERT_EQ(::prlimit(studio.kestrel->pid(), RLIMIT_FSIZE, &nothing, nullptr), 0);
    EXPECT_EQ(studio.terminateKestrel(), 0) << "SIGXFSZ must not end it";
    EXPECT_EQ(contentOf(defaults()), before);
    for (const auto& entry : fs::directory_iterator(studio.studio.configFolder()))
        EXPECT_THAT(
            entry.path().filename().string(), AnyOf("com.holvik.kestrel.plist", EndsWith(".lock")));
}

TEST_F(Storage, a_folder_of_settings_that_is_gone_at_the_end_is_survived)
{
    studio.startKestrel();
    const fs::path folder = studio.studio.configFolder();
    fs::rename(folder, folder.string() + ".gone");
    fill(folder, "a file in its place");
    EXPECT_EQ(studio.terminateKestrel(), 0);
    EXPECT_EQ(contentOf(folder), "a file in its place");
}

TEST_F(Storage, whatever_lies_in_the_place_of_the_defaults_lets_the_program_start_and_end)
{
    studio.studio.assign({ "1", "--title", "Sound" });
    const std::string sound = contentOf(defaults());
    const auto startAndEnd = [this](const std::string& what) {
        studio.startKestrel();
        EXPECT_EQ(studio.terminateKestrel(), 0) << what;
    };
    for (const std::size_t size : { std::size_t { 0 }, std::size_t { 8 }, sound.size() - 1 }) {
        fill(defaults(), sound.substr(0, size));
        startAndEnd("cut to " + std::to_string(size));
        EXPECT_EQ(contentOf(defaults().string() + ".damaged"), sound.substr(0, size));
        EXPECT_EQ(storedLine(), "1 \"\"");
    }
    for (std::size_t at = 0; at < sound.size(); at += sound.size() / 8) {
        std::string flipped = sound;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x55);
        fill(defaults(), flipped);
        startAndEnd("flipped at " + std::to_string(at));
        EXPECT_NE(storedLine(), "") << "sound again";
    }
    fs::remove(defaults());
    ASSERT_EQ(::mkfifo(defaults().c_str(), 0600), 0);
    startAndEnd("fifo");
    EXPECT_TRUE(fs::is_fifo(defaults()));
    fs::remove(defaults());
    fs::remove(recovery());
    fs::create_directory(defaults());
    startAndEnd("folder");
    EXPECT_TRUE(fs::is_directory(defaults()));
    fs::remove(defaults());
    fs::remove(recovery());
    for (const char* target : { "/dev/zero", "com.holvik.kestrel.plist", "/no/such/folder/file" }) {
        fs::create_symlink(target, defaults());
        startAndEnd(target);
        EXPECT_EQ(fs::read_symlink(defaults()), target);
        fs::remove(defaults());
        fs::remove(recovery());
    }
    fs::create_symlink("elsewhere.plist", defaults());
    startAndEnd("dangling link");
    EXPECT_EQ(fs::read_symlink(defaults()), "elsewhere.plist");
    EXPECT_TRUE(fs::is_regular_file(config("elsewhere.plist")));
}

TEST_F(Storage, whatever_lies_in_the_place_of_the_journal_lets_the_program_start_and_end)
{
    studio.startKestrel();
    ASSERT_TRUE(stage::comesTrue([this] { return !journal().empty(); }, StartTimeout));
    const fs::path path = journal();
    EXPECT_EQ(studio.terminateKestrel(), 0);
    const auto startAndEnd = [this](const std::string& what) {
        studio.startKestrel();
        EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty()) << what;
        EXPECT_EQ(studio.terminateKestrel(), 0) << what;
    };
    for (const std::string& content : { std::string(), std::string(40, '\xff'),
             "KestKey1" + std::string(32, '\xff'), std::string(1'000'000, 'x') }) {
        fill(path, content);
        studio.startKestrel();
        EXPECT_TRUE(stage::comesTrue(
            [&] { return contentOf(path) == "KestKey1" + std::string(32, '\0'); }, StartTimeout))
            << content.size() << " bytes";
        EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
        EXPECT_EQ(studio.terminateKestrel(), 0);
    }
    fs::remove(path);
    fs::create_symlink(studio.studio.home() / "precious", path);
    fill(studio.studio.home() / "precious", "precious");
    startAndEnd("link");
    EXPECT_EQ(contentOf(studio.studio.home() / "precious"), "precious");
    fs::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    startAndEnd("fifo");
    fs::remove(path);
    fs::create_directory(path);
    startAndEnd("folder");
}

TEST_F(Storage, a_journal_that_is_cut_while_a_key_is_held_is_whole_at_the_next_key)
{
    studio.studio.assign({ "1", "A" });
    studio.studio.assign({ "2", "S" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    fs::resize_file(journal(), 0);
    EXPECT_THAT(studio.keysAfter("press 2"), ElementsAre("down S"));
    studio.kestrel->signal(SIGKILL);
    ASSERT_EQ(studio.kestrel->wait(StoringTimeout), 128 + SIGKILL);
    EXPECT_FALSE(stage::keysDown(studio.studio.displayName()).empty());
    studio.startKestrel();
    EXPECT_TRUE(studio.allKeysComeUp());
}

TEST_F(Storage, a_program_that_was_stopped_with_a_key_held_holds_none_in_the_end)
{
    studio.studio.assign({ "1", "A" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    studio.kestrel->signal(SIGSTOP);
    studio.console->writeLine("release 1");
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(7000))); // the link counts as lost after five
    studio.kestrel->signal(SIGCONT);
    EXPECT_TRUE(stage::comesTrue(
        [this] { return stage::keysDown(studio.studio.displayName()).empty(); }, StoringTimeout));
    EXPECT_TRUE(studio.isAnswered());
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST_F(Storage, neither_a_turkish_locale_nor_a_wrong_time_zone_changes_a_key)
{
    ::setenv("LC_ALL", "tr_TR.UTF-8", 1);
    ::setenv("TZ", ":no/such/zone", 1);
    studio.studio.assign({ "1", "i", "--title", "ıİiI" });
    studio.startEverything();
    EXPECT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down I"));
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up I"));
    EXPECT_EQ(studio.terminateKestrel(), 0);
    ::setenv("LC_ALL", "C", 1);
    EXPECT_EQ(storedLine(), "1 \"ıİiI\" I");
    ::unsetenv("LC_ALL");
    ::unsetenv("TZ");
}

} // namespace
} // namespace kestrel::test
