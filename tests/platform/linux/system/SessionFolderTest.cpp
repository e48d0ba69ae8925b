#include "platform/SessionFolder.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;

class SessionFolder : public testing::Test {
protected:
    SessionFolder()
    {
        fs::create_directory(runtime);
        fs::permissions(runtime, fs::perms::owner_all);
        ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        ::unsetenv("XDG_STATE_HOME");
        ::setenv("HOME", home.c_str(), 1);
    }
    void expectState() const { EXPECT_EQ(sessionFolder(), home.string() + "/.local/state"); }

    stage::TemporaryFolder folder;
    fs::path runtime = folder.path() / "runtime";
    fs::path home = folder.path() / "home";
};

TEST_F(SessionFolder, is_the_runtime_folder_that_only_this_user_can_write_into)
{
    EXPECT_EQ(sessionFolder(), runtime);
    fs::permissions(runtime, fs::perms(0755));
    EXPECT_EQ(sessionFolder(), runtime);
}

TEST_F(SessionFolder, is_the_state_folder_where_others_can_write_or_this_user_cannot)
{
    for (const int mode : { 0777, 01777, 0770, 0702, 0500, 0600, 0300 }) {
        SCOPED_TRACE(mode);
        fs::permissions(runtime, fs::perms(mode));
        expectState();
    }
    EXPECT_TRUE(fs::is_directory(home / ".local/state")) << "it is made";
}

TEST_F(SessionFolder, is_no_file_and_no_folder_of_another_user)
{
    const auto file = folder.path() / "file";
    std::ofstream(file).close();
    fs::permissions(file, fs::perms::owner_all);
    ::setenv("XDG_RUNTIME_DIR", file.c_str(), 1);
    expectState();
    std::string other = "/"; // belongs to root
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(runtime.c_str(), 65534, 65534), 0);
        other = runtime;
    }
    ::setenv("XDG_RUNTIME_DIR", other.c_str(), 1);
    expectState();
}

TEST_F(SessionFolder, is_named_by_absolute_paths_only)
{
    ::setenv("XDG_RUNTIME_DIR", "runtime", 1);
    ::setenv("XDG_STATE_HOME", "state", 1);
    expectState();
    const auto state = folder.path() / "state";
    ::setenv("XDG_STATE_HOME", state.c_str(), 1);
    EXPECT_EQ(sessionFolder(), state);
    ::unsetenv("XDG_STATE_HOME");
    ::unsetenv("HOME");
    EXPECT_EQ(sessionFolder(), "");
}

} // namespace
} // namespace kestrel::test
