#include "platform/linux/x11/XkbProtocol.h"
#include "tests/platform/linux/x11/X11Bench.h"

#include <xcb/xinput.h>

#include <cstdlib>

namespace kestrel::test {

using KeyEventsOnX11 = X11Bench;
using Result = KeyEvents::Result;

namespace {
// Counts the events that the server sends to the adapters.
class EventCounter final : private X11Connection::Listener {
public:
    explicit EventCounter(X11Connection& connection)
        : m_connection(connection)
    {
        m_connection.add(*this);
    }
    ~EventCounter() { m_connection.remove(*this); }
    [[nodiscard]] int count() const { return m_count; }

private:
    void connectionOpened() override { }
    void connectionLost() override { }
    void eventArrived(const xcb_generic_event_t&) override { ++m_count; }

    X11Connection& m_connection;
    int m_count = 0;
};
} // namespace

TEST_F(KeyEventsOnX11, a_shortcut_arrives_with_its_modifier_and_leaves_none_behind)
{
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "Super down; S down Super; Super up Super");
    releaseShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "S up");
    EXPECT_TRUE(user->keysDown().none());
}

TEST_F(KeyEventsOnX11, four_shortcuts_are_pressed_and_let_go_of_in_order)
{
    pressShortcut(KeyS, Modifier::Command);
    pressShortcut(KeyF5, 0);
    pressShortcut(KeyA, Modifier::Shift | Modifier::Option);
    pressShortcut(KeyD, Modifier::Used);
    EXPECT_EQ(received(),
        "Super down; S down Super; Super up Super; "
        "F5 down; "
        "Shift down; Alt down Shift; A down Shift+Alt; Shift up Shift+Alt; Alt up Alt; "
        "Control down; Shift down Control; Alt down Control+Shift; "
        "Super down Control+Shift+Alt; D down Control+Shift+Alt+Super; "
        "Control up Control+Shift+Alt+Super; Shift up Shift+Alt+Super; Alt up Alt+Super; "
        "Super up Super");
    releaseShortcut(KeyS, Modifier::Command);
    releaseShortcut(KeyF5, 0);
    releaseShortcut(KeyA, Modifier::Shift | Modifier::Option);
    releaseShortcut(KeyD, Modifier::Used);
    EXPECT_EQ(received(), "S up; F5 up; A up; D up");
    EXPECT_TRUE(user->keysDown().none());
}

TEST_F(KeyEventsOnX11, a_modifier_that_was_not_let_go_of_is_gone_from_the_next_press)
{
    EXPECT_EQ(press(KeyS, Modifier::Command), Result::Posted);
    EXPECT_EQ(received(), "Super down; S down Super");
    EXPECT_EQ(press(KeyA, Modifier::Shift), Result::Posted);
    EXPECT_EQ(received(), "Super up Super; Shift down; A down Shift");
}

TEST_F(KeyEventsOnX11, a_second_press_of_a_held_key_is_a_press_of_its_own)
{
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down; A up; A down");
    EXPECT_GT(workstation->times()[2], workstation->times()[1]);
    EXPECT_EQ(release(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A up");
}

TEST_F(KeyEventsOnX11, a_repeat_of_a_held_key_is_an_up_and_a_down_of_one_moment)
{
    EXPECT_EQ(press(KeyA), Result::Posted);
    // Two requests of one write may occasionally fall on two ticks of the server's clock.
    for (int attempt = 0; attempt < 50; ++attempt) {
        EXPECT_EQ(press(KeyA, 0, KeyEvents::AutoRepeat::Yes), Result::Posted);
        received();
        if (workstation->times().back() == workstation->times().end()[-2])
            return;
    }
    FAIL() << "the up and the down were never of one moment";
}

TEST_F(KeyEventsOnX11, a_release_of_a_key_that_is_not_held_posts_nothing)
{
    user->press(39);
    EXPECT_EQ(received(), "S down");
    EXPECT_EQ(release(KeyS, Modifier::Command), Result::Posted);
    EXPECT_EQ(keyEvents->postBare(ModifierKey::Command, KeyEvents::Direction::Up), Result::Posted);
    EXPECT_EQ(received(), "");
    EXPECT_TRUE(user->keysDown().test(39));
}

TEST_F(KeyEventsOnX11, a_key_that_the_user_holds_down_is_pressed_anew)
{
    user->press(39);
    EXPECT_EQ(received(), "S down");
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "Super down; S up Super; S down Super; Super up Super");
    const auto times = workstation->times();
    ASSERT_EQ(times.size(), 4U);
    EXPECT_GT(times[2], times[1]) << "receivers would take it for a repeat";
    releaseShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "S up");
    user->release(39);
    EXPECT_EQ(received(), "");
}

// An event for each press would wake the program once more, and the server writes it to us before
// it writes the key to the workstation.
TEST_F(KeyEventsOnX11, the_server_answers_nothing_to_a_key)
{
    pressShortcut(KeyA, 0);
    releaseShortcut(KeyA, 0);
    settle();
    EventCounter counter(session->connection);
    pressShortcut(KeyA, 0);
    releaseShortcut(KeyA, 0);
    settle();
    EXPECT_EQ(counter.count(), 0);
}

// A second request would take the server time before the key reaches the workstation.
TEST_F(KeyEventsOnX11, a_key_that_nobody_holds_is_pressed_and_let_go_of_with_one_request_each)
{
    const auto pressA = [this] { EXPECT_EQ(press(KeyA), Result::Posted); };
    const auto releaseA = [this] { EXPECT_EQ(release(KeyA), Result::Posted); };
    EXPECT_EQ(requestsOf(pressA), 1u);
    EXPECT_EQ(requestsOf(releaseA), 1u);
    user->press(38);
    settle();
    EXPECT_EQ(requestsOf(pressA), 2u) << "the user holds it";
    EXPECT_EQ(requestsOf(releaseA), 1u);
    user->release(38);
    settle();
    EXPECT_EQ(requestsOf(pressA), 1u);
}

TEST_F(KeyEventsOnX11, a_key_that_the_user_held_at_the_start_is_pressed_anew)
{
    stop();
    user->press(39);
    start();
    EXPECT_EQ(received(), "S down");
    pressShortcut(KeyS, 0);
    EXPECT_EQ(received(), "S up; S down");
}

TEST_F(KeyEventsOnX11, a_key_that_the_user_pressed_during_a_grab_is_pressed_anew)
{
    const XClient other(server->display());
    const Reply<xcb_input_grab_device_reply_t> grab(
        xcb_input_grab_device_reply(other.xcb(),
            xcb_input_grab_device(other.xcb(), other.root(), XCB_CURRENT_TIME, 0,
                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, 0, user->device(), nullptr),
            nullptr),
        &std::free);
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    user->press(39);
    settle();
    xcb_input_ungrab_device(other.xcb(), XCB_CURRENT_TIME, user->device());
    other.synchronise();
    pressShortcut(KeyS, 0);
    EXPECT_EQ(received(), "S down; S up; S down");
}

TEST_F(KeyEventsOnX11, an_unknown_key_code_posts_nothing)
{
    EXPECT_EQ(press(0x34, Modifier::Command), Result::UnknownKey);
    EXPECT_EQ(press(0x80, Modifier::Command), Result::UnknownKey);
    EXPECT_EQ(press(0xFFFF, Modifier::Command), Result::UnknownKey);
    EXPECT_EQ(keyEvents->postBare(0xFFFF, KeyEvents::Direction::Down), Result::UnknownKey);
    EXPECT_EQ(received(), "");
}

TEST_F(KeyEventsOnX11, a_key_that_X_has_no_keycode_for_posts_nothing)
{
    constexpr KeyCode Fn = 63;
    EXPECT_EQ(press(Fn), Result::UnknownKey);
    EXPECT_EQ(received(), "");
}

TEST_F(KeyEventsOnX11, a_bare_press_leaves_the_modifiers_alone)
{
    user->press(50);
    settle();
    EXPECT_EQ(keyEvents->postBare(KeyA, KeyEvents::Direction::Down), Result::Posted);
    EXPECT_EQ(received(), "Shift down; A down Shift");
}

TEST_F(KeyEventsOnX11, locks_of_the_user_stay_as_they_are)
{
    user->press(66);
    user->release(66);
    user->press(77);
    user->release(77);
    received();
    const unsigned locks = user->lockedModifiers();
    EXPECT_EQ(locks, 0x12u);
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "Super down Lock+Num; S down Super+Lock+Num; Super up Super+Lock+Num");
    releaseShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "S up Lock+Num");
    EXPECT_EQ(user->lockedModifiers(), locks);
}

TEST_F(KeyEventsOnX11, a_lock_key_that_is_held_down_is_not_touched)
{
    user->press(66);
    received();
    pressShortcut(KeyA, 0);
    EXPECT_EQ(received(), "A down Lock");
    user->release(66);
    EXPECT_EQ(received(), "CapsLock up Lock");
    EXPECT_EQ(user->lockedModifiers(), 0x2u);
}

// What a user has switched on for all keyboards, to make typing easier, is not for posted keys.
class AccessKeysOnX11 : public KeyEventsOnX11 {
protected:
    void switchOn(std::uint32_t control)
    {
        static constexpr std::uint8_t NoKeys[32] {};
        constexpr std::uint16_t DelayMs = 500;
        xcb_xkb_set_controls(user->xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
            control, control, control, 0, 0, DelayMs, DelayMs, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
            NoKeys);
        user->synchronise();
        settle();
    }
};

// The server ignores a press that comes shortly after a release of the same key.
TEST_F(AccessKeysOnX11, bounce_keys_swallow_no_press)
{
    switchOn(XCB_XKB_BOOL_CTRL_BOUNCE_KEYS);
    for (int stroke = 0; stroke < 2; ++stroke) {
        pressShortcut(KeyS, Modifier::Command);
        EXPECT_EQ(received(), "Super down; S down Super; Super up Super");
        releaseShortcut(KeyS, Modifier::Command);
        EXPECT_EQ(received(), "S up");
    }
}

TEST_F(AccessKeysOnX11, bounce_keys_swallow_no_modifier_of_a_second_shortcut)
{
    switchOn(XCB_XKB_BOOL_CTRL_BOUNCE_KEYS);
    pressShortcut(KeyS, Modifier::Command);
    pressShortcut(KeyA, Modifier::Command);
    EXPECT_EQ(received(),
        "Super down; S down Super; Super up Super; Super down; A down Super; Super up Super");
}

// The server ignores a press that lasts for less than the delay.
TEST_F(AccessKeysOnX11, slow_keys_swallow_no_press)
{
    switchOn(XCB_XKB_BOOL_CTRL_SLOW_KEYS);
    pressShortcut(KeyS, Modifier::Command);
    releaseShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "Super down; S down Super; Super up Super; S up");
}

TEST_F(KeyEventsOnX11, the_caps_lock_flag_alone_presses_no_modifier)
{
    pressShortcut(KeyA, Modifier::CapsLock);
    EXPECT_EQ(received(), "A down");
}

TEST_F(KeyEventsOnX11, keys_are_positions_whatever_the_layout)
{
    stage::ChildProcess layout({ "setxkbmap", "-layout", "fr" }, server->environment());
    ASSERT_EQ(layout.wait(stage::milliseconds(10000)), 0);
    pressShortcut(KeyA, 0); // the key that types q there
    EXPECT_EQ(received(), "A down");
}

TEST_F(KeyEventsOnX11, everything_is_let_go_of_when_the_adapter_ends)
{
    EXPECT_EQ(press(KeyS, Modifier::Command), Result::Posted);
    EXPECT_EQ(press(KeyA, Modifier::Command), Result::Posted);
    received();
    stop();
    EXPECT_EQ(workstation->keys(), "A up Super; S up Super; Super up Super");
    EXPECT_TRUE(user->keysDown().none());
}

TEST_F(KeyEventsOnX11, a_press_takes_no_round_trip)
{
    pressShortcut(KeyS, Modifier::Command);
    releaseShortcut(KeyS, Modifier::Command);
    received();
    const auto before = session->connection.roundTrips();
    for (int press = 0; press < 100; ++press) {
        bool front = false;
        workspace->visitActiveApplications([&](std::string_view localizedName) {
            front = localizedName == "Pro Tools";
            return !front;
        });
        EXPECT_TRUE(front);
        pressShortcut(KeyS, Modifier::Command);
        releaseShortcut(KeyS, Modifier::Command);
    }
    EXPECT_EQ(session->connection.roundTrips(), before);
    received();
    EXPECT_GT(session->connection.roundTrips(), before);
}

} // namespace kestrel::test
