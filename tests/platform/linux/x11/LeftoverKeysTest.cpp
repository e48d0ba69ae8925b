#include "platform/linux/x11/HeldKeysJournal.h"
#include "tests/platform/linux/x11/X11Bench.h"
#include "tools/stage/Patience.h"

#include <xcb/xtest.h>

#include <filesystem>

namespace kestrel::test {

namespace {
using stage::milliseconds;

class LeftoverKeys : public X11Bench {
protected:
    std::unique_ptr<stage::ChildProcess> runHolder()
    {
        auto holder = std::make_unique<stage::ChildProcess>(
            std::vector<std::string> { KESTREL_KEY_HOLDER }, server->environment());
        EXPECT_TRUE(holder->waitForLineWith("held", milliseconds(10000)));
        EXPECT_EQ(workstation->keys(), "Super down; A down Super; S down Super");
        return holder;
    }
    void kill(stage::ChildProcess& holder)
    {
        holder.signal(SIGKILL);
        ASSERT_EQ(holder.wait(milliseconds(5000)), 128 + SIGKILL);
    }
    HeldKeysJournal journal() const
    {
        return HeldKeysJournal(HeldKeysJournal::pathFor(server->display()));
    }
    // Returns the content of the journal that the adapters have open.
    XKeySet journalFile() const
    {
        const std::string path = HeldKeysJournal::pathFor(server->display());
        std::filesystem::copy_file(
            path, path + "-copy", std::filesystem::copy_options::overwrite_existing);
        return HeldKeysJournal(path + "-copy").keys();
    }
};
} // namespace

TEST_F(LeftoverKeys, of_a_killed_run_are_let_go_of_by_the_next_start)
{
    stop();
    kill(*runHolder());
    EXPECT_TRUE(user->keysDown().any());
    start();
    EXPECT_EQ(received(), "A up Super; S up Super; Super up Super");
    EXPECT_TRUE(user->keysDown().none());
    stop();
    EXPECT_TRUE(journal().keys().none());
}

TEST_F(LeftoverKeys, of_another_program_do_not_swallow_a_press)
{
    stop();
    const auto holder = runHolder();
    start();
    EXPECT_EQ(received(), "");
    press(KeyA, Modifier::Command);
    EXPECT_EQ(received(), "A up Super; A down Super");
    release(KeyA, Modifier::Command);
    EXPECT_EQ(received(), "A up Super");
    EXPECT_EQ(requestsOf([this] { press(KeyA, Modifier::Command); }), 1u)
        << "nobody holds it any more";
    EXPECT_EQ(received(), "A down Super");
}

// The keys of the XTEST keyboard are not followed, so the server swallows our press. After our
// release the next press counts.
TEST_F(LeftoverKeys, of_a_program_that_presses_them_later_hide_one_press)
{
    const XClient other(server->display());
    xcb_test_fake_input(
        other.xcb(), XCB_KEY_PRESS, XKey::A, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    other.synchronise();
    EXPECT_EQ(received(), "A down");
    press(KeyA);
    EXPECT_EQ(received(), "");
    release(KeyA);
    EXPECT_EQ(received(), "A up");
    press(KeyA);
    EXPECT_EQ(received(), "A down");
}

TEST_F(LeftoverKeys, are_not_those_of_a_run_that_is_alive)
{
    stop();
    const auto holder = runHolder();
    start();
    EXPECT_EQ(received(), "");
    pressShortcut(KeyF5, 0);
    EXPECT_EQ(received(), "F5 down Super");
}

TEST_F(LeftoverKeys, are_only_what_is_really_down_on_our_keyboard)
{
    stop();
    {
        auto entries = journal();
        ASSERT_TRUE(entries.isOpen());
        entries.enter(38);
        entries.enter(39);
    }
    user->press(38);
    EXPECT_EQ(workstation->keys(), "A down");
    start();
    EXPECT_EQ(received(), "");
    EXPECT_TRUE(user->keysDown().test(38));
    stop();
    EXPECT_TRUE(journal().keys().none());
}

TEST_F(LeftoverKeys, a_run_that_ends_in_order_leaves_none_in_the_journal)
{
    EXPECT_EQ(press(KeyS, Modifier::Command), KeyEvents::Result::Posted);
    settle();
    stop();
    EXPECT_TRUE(journal().keys().none());
}

TEST_F(LeftoverKeys, of_a_run_that_ended_while_the_server_stood_still_are_let_go_of_by_the_next)
{
    stop();
    start(X11Connection::Patience);
    bringToFront(*workstation);
    EXPECT_EQ(press(KeyA), KeyEvents::Result::Posted);
    EXPECT_EQ(received(), "A down");
    server->stop();
    const auto before = std::chrono::steady_clock::now();
    stop();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));
    EXPECT_TRUE(journal().keys().test(38)) << "the server has not let go of it";
    server->resume();
    start();
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown().none(); }));
    stop();
    EXPECT_TRUE(journal().keys().none());
}

TEST_F(LeftoverKeys, stay_in_the_journal_until_the_server_has_said_something_after_the_release)
{
    EXPECT_EQ(press(KeyA), KeyEvents::Result::Posted);
    EXPECT_EQ(received(), "A down");
    EXPECT_TRUE(journalFile().test(38));
    EXPECT_EQ(release(KeyA), KeyEvents::Result::Posted);
    EXPECT_TRUE(journalFile().test(38));
    // Nothing may be asked through the adapters here, so the test waits for the key.
    EXPECT_TRUE(
        stage::comesTrue([this] { return workstation->keys() == "A up"; }, milliseconds(10000)));
    user->press(XKey::Shift);
    EXPECT_TRUE(loop.runUntil([this] { return journalFile().none(); }));
}

TEST_F(LeftoverKeys, stay_in_the_journal_when_they_are_pressed_again_meanwhile)
{
    EXPECT_EQ(press(KeyA), KeyEvents::Result::Posted);
    EXPECT_EQ(release(KeyA), KeyEvents::Result::Posted);
    EXPECT_EQ(press(KeyA), KeyEvents::Result::Posted);
    EXPECT_EQ(received(), "A down; A up; A down");
    user->press(XKey::Shift);
    EXPECT_EQ(received(), "Shift down");
    EXPECT_TRUE(journalFile().test(38));
}

TEST_F(LeftoverKeys, a_journal_that_cannot_be_made_is_no_hindrance)
{
    stop();
    ::setenv("XDG_RUNTIME_DIR", "/nonexistent", 1);
    ::setenv("XDG_STATE_HOME", "/proc/none", 1);
    start();
    pressShortcut(KeyA, 0);
    EXPECT_EQ(received(), "A down");
}

} // namespace kestrel::test
