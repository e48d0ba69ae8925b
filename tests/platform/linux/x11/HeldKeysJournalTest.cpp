#include "platform/linux/x11/HeldKeysJournal.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace kestrel::test {

namespace {
class Journal : public ::testing::Test {
protected:
    Journal()
        : path((folder.path() / "keys").string())
    {
        ::setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
        ::unsetenv("XDG_STATE_HOME");
        ::setenv("HOME", (folder.path() / "home").c_str(), 1);
    }
    void fill(const std::string& content) { std::ofstream(path, std::ios::binary) << content; }
    std::string content() const
    {
        std::ifstream file(path, std::ios::binary);
        return { std::istreambuf_iterator<char>(file), {} };
    }
    std::string inFolder(const std::string& name) const { return (folder.path() / name).string(); }

    stage::TemporaryFolder folder;
    std::string path;
};

const std::string Mark = "KestKey1";
} // namespace

TEST_F(Journal, is_looked_at_without_a_change_while_another_has_it_open)
{
    EXPECT_TRUE(HeldKeysJournal::keysIn(path).none());
    EXPECT_FALSE(std::filesystem::exists(path));
    HeldKeysJournal journal(path);
    journal.enter(XKeySet().set(39).set(255));
    const std::string before = content();
    EXPECT_EQ(HeldKeysJournal::keysIn(path), XKeySet().set(39).set(255));
    EXPECT_EQ(content(), before);
    journal.enter(XKeySet().set(40));
    EXPECT_EQ(HeldKeysJournal::keysIn(path).count(), 3u);
}

TEST_F(Journal, that_is_none_holds_no_keys)
{
    fill("KestKey2" + std::string(32, '\xFF'));
    EXPECT_TRUE(HeldKeysJournal::keysIn(path).none());
    fill(Mark + std::string(31, '\xFF'));
    EXPECT_TRUE(HeldKeysJournal::keysIn(path).none());
    ASSERT_EQ(::mkfifo(inFolder("fifo").c_str(), 0600), 0);
    EXPECT_TRUE(HeldKeysJournal::keysIn(inFolder("fifo")).none());
}

TEST_F(Journal, is_read_by_the_next_run)
{
    {
        HeldKeysJournal journal(path);
        journal.enter(XKeySet().set(0));
        journal.enter(XKeySet().set(39));
        journal.enter(XKeySet().set(133));
        journal.enter(XKeySet().set(255));
        journal.strike(XKeySet().set(39));
    }
    EXPECT_EQ(HeldKeysJournal(path).keys(), XKeySet().set(0).set(133).set(255));
}

TEST_F(Journal, is_a_mark_and_one_bit_a_key)
{
    HeldKeysJournal journal(path);
    journal.enter(XKeySet().set(9));
    std::string expected = Mark + std::string(32, '\0');
    expected[9] = '\x02';
    EXPECT_EQ(content(), expected);
}

TEST_F(Journal, belongs_to_the_user_alone)
{
    const HeldKeysJournal journal(path);
    struct stat status { };
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(Journal, of_another_size_is_ignored_and_begun_anew)
{
    for (const std::size_t size : { 0u, 1u, 39u, 41u, 100000u }) {
        fill((Mark + std::string(100000, '\xff')).substr(0, size));
        EXPECT_TRUE(HeldKeysJournal(path).keys().none()) << size;
        EXPECT_EQ(content(), Mark + std::string(32, '\0')) << size;
    }
}

TEST_F(Journal, that_another_program_cuts_or_overwrites_is_whole_after_the_next_key)
{
    for (const std::string& foreign : { std::string(), std::string("KestKey"),
             std::string(39, '\xff'), std::string(40, '\0'), std::string(40, '\xff') }) {
        std::filesystem::remove(path);
        HeldKeysJournal journal(path);
        journal.enter(XKeySet().set(39));
        fill(foreign); // truncates the file in place
        EXPECT_EQ(journal.keys(), XKeySet().set(39));
        journal.enter(XKeySet().set(40));
        journal = {};
        EXPECT_EQ(HeldKeysJournal(path).keys(), XKeySet().set(39).set(40)) << foreign.size();
    }
}

TEST_F(Journal, that_is_a_fifo_is_neither_waited_for_nor_touched)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(HeldKeysJournal(path).isOpen());
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(Journal, with_another_mark_is_ignored_and_begun_anew)
{
    fill("KestKey2" + std::string(32, '\xff'));
    EXPECT_TRUE(HeldKeysJournal(path).keys().none());
    EXPECT_EQ(content(), Mark + std::string(32, '\0'));
}

TEST_F(Journal, that_a_living_run_has_is_left_to_it)
{
    HeldKeysJournal first(path);
    first.enter(XKeySet().set(39));
    HeldKeysJournal second(path);
    EXPECT_FALSE(second.isOpen());
    second.enter(XKeySet().set(40));
    EXPECT_TRUE(second.keys().none());
    EXPECT_EQ(first.keys(), XKeySet().set(39));
}

TEST_F(Journal, that_is_a_link_or_a_folder_is_not_touched)
{
    fill("precious");
    ASSERT_EQ(::symlink(path.c_str(), inFolder("link").c_str()), 0);
    ASSERT_EQ(::link(path.c_str(), inFolder("second-name").c_str()), 0);
    EXPECT_FALSE(HeldKeysJournal(inFolder("link")).isOpen());
    EXPECT_FALSE(HeldKeysJournal(inFolder("second-name")).isOpen());
    EXPECT_FALSE(HeldKeysJournal(folder.path().string()).isOpen());
    EXPECT_FALSE(HeldKeysJournal(inFolder("missing/keys")).isOpen());
    EXPECT_FALSE(HeldKeysJournal("").isOpen());
    EXPECT_EQ(content(), "precious");
}

TEST_F(Journal, is_in_the_runtime_folder_under_the_name_of_the_display)
{
    EXPECT_EQ(HeldKeysJournal::pathFor(":0"), inFolder("kestrel-held-keys-_3a0"));
    EXPECT_EQ(HeldKeysJournal::pathFor(":0.1"), HeldKeysJournal::pathFor(":0"));
    EXPECT_EQ(HeldKeysJournal::pathFor("a.b:10.0"), inFolder("kestrel-held-keys-a_2eb_3a10"));
    EXPECT_NE(HeldKeysJournal::pathFor("a.b:10"), HeldKeysJournal::pathFor("a.c:10"));
    EXPECT_EQ(HeldKeysJournal::pathFor("../x:1"), inFolder("kestrel-held-keys-_2e_2e_2fx_3a1"));
}

TEST_F(Journal, is_in_the_state_folder_where_there_is_no_runtime_folder)
{
    ::setenv("XDG_RUNTIME_DIR", inFolder("missing").c_str(), 1);
    EXPECT_EQ(HeldKeysJournal::pathFor(":0"), inFolder("home/.local/state/kestrel-held-keys-_3a0"));
    EXPECT_TRUE(HeldKeysJournal(HeldKeysJournal::pathFor(":0")).isOpen());
    ::setenv("XDG_STATE_HOME", inFolder("state").c_str(), 1);
    EXPECT_EQ(HeldKeysJournal::pathFor(":0"), inFolder("state/kestrel-held-keys-_3a0"));
    ::unsetenv("XDG_RUNTIME_DIR");
    ::unsetenv("XDG_STATE_HOME");
    ::unsetenv("HOME");
    EXPECT_EQ(HeldKeysJournal::pathFor(":0"), "");
}

} // namespace kestrel::test
