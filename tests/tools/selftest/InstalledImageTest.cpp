#include "tools/selftest/macos/InstalledImage.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <optional>

namespace kestrel::selftest {
namespace {

namespace fs = std::filesystem;

// A home folder of its own, and stand-ins for the tools of macOS in front of the others.
class InstalledImageTest : public testing::Test {
protected:
    InstalledImageTest()
    {
        fs::create_directories(bin);
        for (const char* tool :
            { "codesign", "defaults", "ditto", "hdiutil", "killall", "open", "pgrep" })
            fs::create_symlink(KESTREL_TOOLBOX, bin / tool);
        ::setenv("PATH", (bin.string() + ':' + oldPath).c_str(), 1);
        ::setenv("HOME", folder.path().c_str(), 1);
        fs::create_directories(recovery.parent_path());
    }
    ~InstalledImageTest() override
    {
        ::unsetenv("REFUSING");
        ::setenv("PATH", oldPath.c_str(), 1);
        ::setenv("HOME", oldHome.c_str(), 1);
    }

    static void write(const fs::path& file, const std::string& text)
    {
        std::ofstream(file) << text << '\n';
    }
    static std::optional<std::string> contentOf(const fs::path& file)
    {
        std::string line;
        if (!std::getline(std::ifstream(file), line))
            return std::nullopt;
        return line;
    }
    void haveSettings() const
    {
        write(settings, "the user's");
        write(recovery, "the user's own copy");
    }
    // The fault of one run in which calls with this text fail.
    [[nodiscard]] std::string faultWithout(const std::string& call = {}) const
    {
        ::setenv("REFUSING", call.c_str(), 1);
        std::string fault;
        {
            InstalledImage image("Kestrel.dmg", output);
            fault = image.fault("Mixing.ZKCF");
        }
        ::unsetenv("REFUSING");
        return fault;
    }
    // That nothing of the run is left.
    void expectAsBefore(const std::string& when) const
    {
        EXPECT_EQ(contentOf(settings), "the user's") << when;
        EXPECT_EQ(contentOf(recovery), "the user's own copy") << when;
        EXPECT_FALSE(fs::exists(output / "settings.plist")) << when;
        EXPECT_FALSE(fs::exists(recovery.string() + ".before-selftest")) << when;
        EXPECT_FALSE(fs::exists(folder.path() / "running")) << when;
        EXPECT_FALSE(fs::exists(output / "volume/ZENTA Kestrel.app")) << when;
    }

    const std::string oldPath = std::getenv("PATH");
    const std::string oldHome = std::getenv("HOME");
    stage::TemporaryFolder folder { fs::temp_directory_path() };
    const fs::path bin = folder.path() / "bin";
    const fs::path settings = folder.path() / "settings";
    const fs::path recovery = folder.path() / "Library/Application Support/kestrel/recovery.ZKCF";
    const fs::path output = folder.path() / "output";
};

TEST_F(InstalledImageTest, the_users_settings_are_set_aside_and_come_back)
{
    fs::create_directories(output);
    haveSettings();
    EXPECT_EQ(faultWithout(), "");
    expectAsBefore("without a failure");
}

TEST_F(InstalledImageTest, the_users_settings_come_back_after_a_failure_of_any_step)
{
    fs::create_directories(output);
    haveSettings();
    for (const char* call : { "hdiutil attach", "ditto", "codesign", "open", "kestrelctl status",
             "kestrelctl set sheet", "killall -TERM", "defaults read" }) {
        EXPECT_NE(faultWithout(call), "") << call;
        expectAsBefore(call);
    }
}

TEST_F(InstalledImageTest, a_user_without_settings_has_none_afterwards)
{
    fs::create_directories(output);
    EXPECT_EQ(faultWithout(), "");
    EXPECT_EQ(contentOf(settings), std::nullopt);
    EXPECT_FALSE(fs::exists(recovery));
    EXPECT_FALSE(fs::exists(output / "settings.plist"));
}

TEST_F(InstalledImageTest, settings_that_cannot_be_set_aside_are_not_touched)
{
    fs::create_directories(output);
    haveSettings();
    EXPECT_EQ(faultWithout("defaults export"), "the user's settings cannot be set aside");
    expectAsBefore("without the export");
}

TEST_F(InstalledImageTest, settings_that_cannot_be_put_back_are_kept_and_stop_the_next_run)
{
    fs::create_directories(output);
    haveSettings();
    EXPECT_EQ(faultWithout("defaults import"), "");
    EXPECT_EQ(contentOf(output / "settings.plist"), "the user's");
    EXPECT_EQ(faultWithout().substr(0, 47), "an earlier run has left what it set aside: put ");
    EXPECT_EQ(contentOf(output / "settings.plist"), "the user's");
}

TEST_F(InstalledImageTest, a_program_that_runs_already_is_left_alone)
{
    fs::create_directories(output);
    haveSettings();
    write(folder.path() / "running", "");
    EXPECT_EQ(faultWithout(), "ZENTA Kestrel runs already: quit it first");
    EXPECT_TRUE(fs::exists(folder.path() / "running"));
    EXPECT_EQ(contentOf(settings), "the user's");
}

} // namespace
} // namespace kestrel::selftest
