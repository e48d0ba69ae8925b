#include "platform/linux/x11/HeldKeysJournal.h"
#include "platform/linux/x11/X11Adapters.h"
#include "tests/platform/linux/x11/X11Bench.h"

#include <poll.h>
#include <xcb/xtest.h>

#include <csignal>

namespace kestrel::test {

namespace {
using Result = KeyEvents::Result;

// Longer than one wait for an answer, even on a busy machine, and shorter than a wait for each
// question.
constexpr auto Bounded = std::chrono::seconds(10);

class LostConnection : public X11Bench {
protected:
    // Kills the connection, as a window manager may when the user closes a frozen program.
    void killOurConnection()
    {
        auto* xcb = session->connection.xcb();
        const xcb_window_t window = xcb_generate_id(xcb);
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, session->connection.screen().root, 0,
            0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        settle();
        xcb_kill_client(user->xcb(), window);
        user->synchronise();
        pollfd end { xcb_get_file_descriptor(xcb), POLLRDHUP, 0 };
        ASSERT_EQ(::poll(&end, 1, 10000), 1);
    }
    // Starts the adapters with the patience that they have in the program.
    void startImpatiently()
    {
        stop();
        start(X11Connection::Patience);
        bringToFront(*workstation);
    }
    void closeEverythingElse()
    {
        workstation.reset();
        user.reset();
    }
    std::string visited()
    {
        std::string names;
        workspace->visitActiveApplications([&](std::string_view localizedName) {
            names += localizedName;
            return true;
        });
        return names;
    }
};
} // namespace

TEST_F(LostConnection, is_noticed_by_the_next_call)
{
    killOurConnection();
    EXPECT_EQ(press(KeyA), Result::Unavailable);
    EXPECT_EQ(keyEvents->postBare(KeyA, KeyEvents::Direction::Up), Result::Unavailable);
    EXPECT_EQ(visited(), "");
    EXPECT_EQ(workstation->keys(), "");
}

TEST_F(LostConnection, is_noticed_by_the_loop)
{
    killOurConnection();
    EXPECT_TRUE(loop.runUntil([this] { return !session->connection.isOpen(); }));
    EXPECT_EQ(session->front.name(), std::nullopt);
    loop.runFor(std::chrono::milliseconds(20));
    EXPECT_EQ(press(0xFFFF), Result::UnknownKey);
}

TEST_F(LostConnection, is_made_again_and_works_as_before)
{
    killOurConnection();
    EXPECT_EQ(press(KeyA), Result::Unavailable);
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down");
    EXPECT_EQ(visited(), "Pro Tools");
    EXPECT_EQ(release(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A up");
}

TEST_F(LostConnection, what_the_user_holds_through_it_is_pressed_anew)
{
    user->press(XKey::A);
    killOurConnection();
    EXPECT_EQ(press(KeyA), Result::Unavailable);
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_EQ(requestsOf([this] { EXPECT_EQ(press(KeyA), Result::Posted); }), 2u);
    EXPECT_EQ(requestsOf([this] { EXPECT_EQ(press(KeyS), Result::Posted); }), 1u);
}

// A press on a new connection would not know the front application. So only a new look at it may
// open a connection.
TEST_F(LostConnection, ends_the_stroke_that_it_interrupts)
{
    EXPECT_EQ(visited(), "Pro Tools");
    killOurConnection();
    EXPECT_EQ(press(KeyA), Result::Unavailable);
    loop.runFor(std::chrono::milliseconds(1100)); // a new connection may be tried by now
    EXPECT_EQ(press(KeyS), Result::Unavailable);
    EXPECT_EQ(workstation->keys(), "");
    EXPECT_EQ(visited(), "Pro Tools");
    EXPECT_EQ(press(KeyD), Result::Posted);
    EXPECT_EQ(received(), "D down");
}

TEST_F(LostConnection, keys_held_through_it_are_let_go_of_by_the_next_one)
{
    EXPECT_EQ(press(KeyS, Modifier::Command), Result::Posted);
    EXPECT_EQ(received(), "Super down; S down Super");
    killOurConnection();
    EXPECT_EQ(visited(), "");
    EXPECT_TRUE(user->keysDown().any());
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_EQ(received(), "S up Super; Super up Super");
    EXPECT_EQ(release(KeyS), Result::Posted);
    EXPECT_EQ(received(), "");
}

TEST_F(LostConnection, what_another_program_holds_by_then_is_left_alone)
{
    const auto othersKeyA = [this](std::uint8_t type) {
        xcb_test_fake_input(user->xcb(), type, XKey::A, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        user->synchronise();
    };
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down");
    for (const bool isHeldByOther : { false, true }) {
        killOurConnection();
        EXPECT_EQ(visited(), "");
        EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
        EXPECT_EQ(user->keysDown().test(XKey::A), isHeldByOther);
        othersKeyA(isHeldByOther ? XCB_KEY_RELEASE : XCB_KEY_PRESS);
    }
}

TEST_F(LostConnection, what_stood_in_for_the_user_is_let_go_of_without_a_journal_too)
{
    stop();
    const HeldKeysJournal other(HeldKeysJournal::pathFor(server->display()));
    ASSERT_TRUE(other.isOpen());
    start();
    bringToFront(*workstation);
    user->press(XKey::Shift);
    EXPECT_EQ(received(), "Shift down");
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "Shift up Shift; A down; Shift down");
    killOurConnection();
    user->release(XKey::Shift);
    EXPECT_EQ(visited(), "");
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_TRUE(user->keysDown().none());
    static_cast<void>(received());
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down") << "the user holds nothing by now";
}

TEST_F(LostConnection, a_successor_that_takes_no_key_events_still_tells_who_is_in_front)
{
    user->press(XKey::Shift);
    EXPECT_EQ(received(), "Shift down");
    EXPECT_EQ(press(KeyA), Result::Posted);
    settle();
    server->kill();
    closeEverythingElse();
    EXPECT_EQ(press(KeyA), Result::Unavailable);

    stage::PrivateXServer::Options options;
    options.without = "XTEST";
    server.emplace(options);
    ::setenv("DISPLAY", server->display().c_str(), 1);
    workstation.emplace(server->display(), "Pro Tools");
    ASSERT_TRUE(loop.runUntil([this] { return workstation->isManaged(); }));
    workstation->activate();
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_EQ(press(KeyA), Result::Unavailable);
    EXPECT_EQ(visited(), "Pro Tools");
    EXPECT_EQ(received(), "");
}

TEST_F(LostConnection, is_tried_at_most_once_a_second)
{
    killOurConnection();
    EXPECT_EQ(visited(), "");
    const auto lost = std::chrono::steady_clock::now();
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    killOurConnection();
    EXPECT_EQ(visited(), "");
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_GE(std::chrono::steady_clock::now() - lost, std::chrono::milliseconds(950));
}

TEST_F(LostConnection, a_server_that_dies_is_survived_and_its_successor_found)
{
    EXPECT_EQ(press(KeyA), Result::Posted);
    settle();
    server->kill();
    closeEverythingElse();
    EXPECT_EQ(press(KeyA), Result::Unavailable);
    EXPECT_EQ(visited(), "");
    workspace->hideApplication();
    workspace->activateApplication();

    server.emplace();
    ::setenv("DISPLAY", server->display().c_str(), 1);
    workstation.emplace(server->display(), "Pro Tools");
    ASSERT_TRUE(loop.runUntil([this] { return workstation->isManaged(); }));
    workstation->activate();
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_EQ(received(), "");
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "Super down; S down Super; Super up Super");
}

TEST_F(LostConnection, a_server_that_dies_during_a_burst_is_survived)
{
    server->kill();
    for (int count = 0; count < 1000; ++count)
        EXPECT_EQ(press(KeyA, Modifier::Used), Result::Unavailable);
    closeEverythingElse();
}

// A connection can always break between a check and the write that follows.
TEST(Connection, that_breaks_during_a_write_does_not_end_the_program)
{
    ::signal(SIGPIPE, SIG_DFL); // the default in a new program
    PollMainLoop loop;
    const X11Connection connection(loop);
    EXPECT_EQ(::signal(SIGPIPE, SIG_DFL), SIG_IGN);
}

TEST_F(LostConnection, a_server_that_stands_still_holds_up_no_question)
{
    startImpatiently();
    EXPECT_EQ(press(KeyA), Result::Posted);
    settle();
    server->stop();
    const auto before = std::chrono::steady_clock::now();
    for (int count = 0; count < 100; ++count) {
        workspace->activateApplication(); // asks the server several things
        EXPECT_EQ(release(KeyA), Result::Unavailable);
        EXPECT_EQ(visited(), "");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - before, Bounded);
    server->resume();
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown().none(); }));
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down; A up; A down");
}

TEST_F(LostConnection, a_server_that_stands_still_holds_up_no_press)
{
    startImpatiently();
    EXPECT_EQ(press(KeyA), Result::Posted);
    settle();
    server->stop();
    const auto before = std::chrono::steady_clock::now();
    int refused = 0;
    for (int count = 0; count < 10000; ++count)
        refused += press(KeyS, Modifier::Command) == Result::Unavailable ? 1 : 0;
    EXPECT_LT(std::chrono::steady_clock::now() - before, Bounded);
    EXPECT_GT(refused, 9000);
    EXPECT_EQ(release(KeyA), Result::Unavailable);
    server->resume();
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown().none(); }));
    EXPECT_TRUE(loop.runUntil([this] { return visited() == "Pro Tools"; }));
}

TEST_F(LostConnection, who_joins_while_the_server_stands_still_is_told_when_it_goes_on)
{
    startImpatiently();
    struct Joining final : X11Connection::Listener {
        void connectionOpened() override { ++opened; }
        void connectionLost() override { }
        void eventArrived(const xcb_generic_event_t&) override { }
        int opened = 0;
    } joining;
    server->stop();
    workspace->activateApplication(); // asks, and gets no answer
    ASSERT_FALSE(session->connection.isUsable());
    session->connection.add(joining);
    EXPECT_EQ(joining.opened, 0);
    server->resume();
    EXPECT_TRUE(loop.runUntil([&joining] { return joining.opened == 1; }));
    session->connection.remove(joining);
}

TEST_F(LostConnection, a_server_that_stands_still_holds_up_no_attempt_to_connect)
{
    server->stop();
    X11Connection connection(loop);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(connection.ensureOpen());
    EXPECT_FALSE(connection.ensureOpen());
    EXPECT_LT(std::chrono::steady_clock::now() - before, Bounded);
    server->resume();
    EXPECT_TRUE(loop.runUntil([&connection] { return connection.ensureOpen(); }));
}

TEST(NoServer, is_unavailable_and_nothing_else)
{
    ::unsetenv("DISPLAY");
    PollMainLoop loop;
    const X11Adapters adapters = makeX11Adapters(loop);
    EXPECT_EQ(adapters.keyEvents->post(0, KeyEvents::Direction::Down, 0, KeyEvents::AutoRepeat::No),
        Result::Unavailable);
    EXPECT_EQ(
        adapters.keyEvents->post(0xFFFF, KeyEvents::Direction::Down, 0, KeyEvents::AutoRepeat::No),
        Result::UnknownKey);
    EXPECT_EQ(adapters.keyEvents->postBare(0, KeyEvents::Direction::Up), Result::Unavailable);
    adapters.workspace->visitActiveApplications([](std::string_view) {
        ADD_FAILURE();
        return true;
    });
    static_cast<void>(adapters.workspace->hideApplication());
    adapters.workspace->activateApplication();
    adapters.windowTraits->setFloating(1);
    adapters.windowTraits->setNeverFocused(1);
    adapters.windowTraits->setContentAspectRatio(1, 2, 1);
}

} // namespace kestrel::test
