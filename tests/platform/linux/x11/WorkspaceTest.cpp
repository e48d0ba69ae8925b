#include "tests/platform/linux/x11/X11Bench.h"
#include "tools/stage/TemporaryFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace kestrel::test {

namespace {
class WorkspaceOnX11 : public X11Bench {
protected:
    // A window of this process.
    struct OwnWindow : KeyReceiver {
        explicit OwnWindow(const std::string& display)
            : KeyReceiver(display, "Kestrel", Map::No)
        {
            setWords(window(), "_NET_WM_PID", XCB_ATOM_CARDINAL,
                { static_cast<std::uint32_t>(::getpid()) });
            map();
        }
        bool isIconic() const
        {
            const auto state = words(window(), "WM_STATE");
            return !state.empty() && state.front() == 3;
        }
    };

    void show(OwnWindow& window)
    {
        ASSERT_TRUE(loop.runUntil([&] { return window.isManaged(); }));
    }
};

class OpeningFiles : public WorkspaceOnX11 {
protected:
    OpeningFiles()
        : m_path(std::getenv("PATH"))
    {
        ::setenv("PATH", folder.path().c_str(), 1);
    }
    ~OpeningFiles() override { ::setenv("PATH", m_path.c_str(), 1); }

    void installOpener()
    {
        const auto opener = folder.path() / "xdg-open";
        std::ofstream(opener) << "#!/bin/sh\nprintf '%s' \"$1\" >'" << folder.path().string()
                              << "/part' && /bin/mv '" << folder.path().string() << "/part' '"
                              << opened().string() << "'\n";
        std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    }
    std::filesystem::path opened() const { return folder.path() / "opened"; }
    std::string whatWasOpened()
    {
        EXPECT_TRUE(loop.runUntil([this] { return std::filesystem::exists(opened()); }));
        std::ifstream file(opened());
        return { std::istreambuf_iterator<char>(file), {} };
    }

    stage::TemporaryFolder folder;

private:
    std::string m_path;
};
} // namespace

TEST_F(WorkspaceOnX11, hiding_is_left_to_the_caller)
{
    OwnWindow window(server->display());
    show(window);
    EXPECT_FALSE(workspace->hideApplication());
    settle();
    EXPECT_FALSE(window.isIconic());
}

TEST_F(WorkspaceOnX11, activating_brings_the_last_shown_window_to_the_front)
{
    OwnWindow first(server->display());
    show(first);
    OwnWindow second(server->display());
    show(second);
    bringToFront(*workstation);
    workspace->activateApplication();
    EXPECT_TRUE(loop.runUntil([&] { return second.hasFocus(); }));
    EXPECT_TRUE(loop.runUntil([&] { return session->front.name() == "Kestrel"; }));
}

TEST_F(WorkspaceOnX11, without_windows_of_its_own_nothing_happens)
{
    workspace->activateApplication();
    settle();
    settleWindowManager();
    EXPECT_TRUE(workstation->hasFocus());
}

TEST_F(OpeningFiles, hands_the_path_to_the_desktop_and_leaves_no_process_behind)
{
    installOpener();
    EXPECT_TRUE(workspace->openFile("/"));
    EXPECT_EQ(whatWasOpened(), "/");
    siginfo_t ended {};
    ::waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT);
    EXPECT_EQ(ended.si_pid, 0);
}

TEST_F(OpeningFiles, a_name_like_an_option_is_a_name)
{
    installOpener();
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    std::ofstream("--help") << "";
    EXPECT_TRUE(workspace->openFile("--help"));
    EXPECT_EQ(whatWasOpened(), "./--help");
    std::filesystem::current_path(before);
}

TEST_F(OpeningFiles, fails_for_a_path_that_does_not_exist)
{
    installOpener();
    EXPECT_FALSE(workspace->openFile((folder.path() / "missing").string()));
    EXPECT_FALSE(workspace->openFile(""));
}

TEST_F(OpeningFiles, fails_without_an_opener)
{
    EXPECT_FALSE(workspace->openFile("/"));
}

} // namespace kestrel::test
