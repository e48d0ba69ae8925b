#include "tests/platform/linux/x11/X11Bench.h"
#include "tests/platform/linux/x11/XClient.h"

#include <gmock/gmock.h>
#include <xcb/xtest.h>

namespace kestrel::test {

namespace {

// The user holds modifier keys on the real keyboard while console keys are pressed.
class HeldModifiers : public X11Bench {
protected:
    void userPresses(xcb_keycode_t key)
    {
        user->press(key);
        received();
    }
    // Posts through XTEST and lets the adapters know.
    void otherPosts(std::uint8_t type, xcb_keycode_t key)
    {
        xcb_test_fake_input(other.xcb(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        other.synchronise();
        settle();
        received();
    }

    const XClient other { server->display() };
};
} // namespace

TEST_F(HeldModifiers, an_unnamed_one_is_taken_away_for_the_press_and_given_back)
{
    userPresses(XKey::Shift);
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(),
        "Shift up Shift; Super down; S down Super; Shift down Super; Super up Shift+Super");
    EXPECT_EQ(user->modifiers(), 1u);
    releaseShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "S up Shift");

    user->release(XKey::Shift);
    EXPECT_EQ(received(), "Shift up Shift");
    EXPECT_TRUE(user->keysDown().none());
}

TEST_F(HeldModifiers, an_unnamed_one_is_taken_away_from_a_plain_key_too)
{
    userPresses(XKey::Shift);
    pressShortcut(KeyA, 0);
    EXPECT_EQ(received(), "Shift up Shift; A down; Shift down");
}

TEST_F(HeldModifiers, the_key_that_is_really_held_is_the_one_taken_away)
{
    userPresses(XKey::RightShift);
    pressShortcut(KeyA, 0);
    EXPECT_EQ(received(), "RightShift up Shift; A down; RightShift down");
    user->release(XKey::RightShift);
    EXPECT_EQ(received(), "RightShift up Shift");
    EXPECT_EQ(user->modifiers(), 0u);
}

TEST_F(HeldModifiers, a_named_one_stays_with_the_user)
{
    userPresses(XKey::Super);
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "S down Super");
    releaseShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "S up Super");
    user->release(XKey::Super);
    EXPECT_EQ(received(), "Super up Super");
    EXPECT_TRUE(user->keysDown().none());
}

TEST_F(HeldModifiers, a_named_one_works_again_after_the_user_has_let_go)
{
    userPresses(XKey::Super);
    pressShortcut(KeyS, Modifier::Command);
    user->release(XKey::Super);
    received();
    pressShortcut(KeyS, Modifier::Command);
    EXPECT_EQ(received(), "Super down; S up Super; S down Super; Super up Super");
    EXPECT_FALSE(user->keysDown().test(XKey::Super));
}

TEST_F(HeldModifiers, one_pressed_during_the_hold_is_taken_away_from_the_next_press)
{
    pressShortcut(KeyS, Modifier::Command);
    received();
    userPresses(XKey::Shift);
    pressShortcut(KeyA, 0);
    EXPECT_EQ(received(), "Shift up Shift; A down; Shift down");
}

// The user's release of Shift reaches the server between the plan of a press and its steps. The
// press then gives back a Shift that the user no longer holds. The event from the user's keyboard
// corrects this while only the loop runs.
TEST_F(HeldModifiers, one_let_go_of_while_a_press_is_on_its_way_does_not_stick)
{
    userPresses(XKey::Shift);
    user->releaseThrough(session->connection.xcb(), XKey::Shift);
    pressShortcut(KeyA, 0);
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown() == XKeySet().set(38); }));
    EXPECT_EQ(received(), "Shift up Shift; A down; Shift down; Shift up Shift");
}

TEST_F(HeldModifiers, following_them_costs_nothing_while_none_changes)
{
    userPresses(XKey::Shift);
    const auto before = session->connection.roundTrips();
    for (int press = 0; press < 20; ++press) {
        pressShortcut(KeyS, Modifier::Command);
        releaseShortcut(KeyS, Modifier::Command);
    }
    EXPECT_EQ(session->connection.roundTrips(), before);
    settle();
    EXPECT_EQ(user->modifiers() & 1u, 1u);
}

TEST_F(HeldModifiers, one_that_another_program_holds_through_xtest_stays_with_it)
{
    otherPosts(XCB_KEY_PRESS, XKey::Shift);
    pressShortcut(KeyS, Modifier::Shift);
    EXPECT_EQ(received(), "S down Shift");
    releaseShortcut(KeyS, Modifier::Shift);
    EXPECT_EQ(received(), "S up Shift");
    EXPECT_EQ(user->modifiers(), 1u) << "as it was before";
    keyEvents->releaseAll();
    settle();
    EXPECT_EQ(user->modifiers(), 1u);
    otherPosts(XCB_KEY_RELEASE, XKey::Shift);
    EXPECT_EQ(user->modifiers(), 0u);
    pressShortcut(KeyS, Modifier::Shift);
    EXPECT_EQ(received(), "Shift down; S down Shift; Shift up Shift") << "it is ours again";
}

// The event of the other program's press comes after our own release of the same key.
TEST_F(HeldModifiers, one_that_another_program_held_before_our_release_is_ours_again)
{
    xcb_test_fake_input(
        other.xcb(), XCB_KEY_PRESS, XKey::Shift, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    other.synchronise();
    server->stop(); // it answers nothing of what follows before the event is read
    pressShortcut(KeyS, Modifier::Shift);
    session->connection.takeIn();
    pressShortcut(KeyD, Modifier::Shift);
    server->resume();
    EXPECT_THAT(received(), testing::HasSubstr("D down Shift"));
    EXPECT_EQ(user->modifiers(), 0u);
}

// Our release takes it from the other program. The server tells so only after the next press.
TEST_F(HeldModifiers, one_that_another_program_holds_is_ours_after_our_release)
{
    otherPosts(XCB_KEY_PRESS, XKey::Shift);
    server->stop(); // no event of what follows can arrive before the last press is posted
    EXPECT_EQ(keyEvents->postBare(ModifierKey::Shift, KeyEvents::Direction::Down),
        KeyEvents::Result::Posted);
    EXPECT_EQ(keyEvents->postBare(ModifierKey::Shift, KeyEvents::Direction::Up),
        KeyEvents::Result::Posted);
    pressShortcut(KeyS, Modifier::Shift);
    server->resume();
    EXPECT_THAT(received(), testing::HasSubstr("S down Shift"));
    EXPECT_EQ(user->modifiers(), 0u);
}

// The server tells of the release of the last Shift key only.
TEST_F(HeldModifiers, one_is_ours_after_another_program_has_released_all_that_it_held)
{
    otherPosts(XCB_KEY_PRESS, XKey::Shift);
    otherPosts(XCB_KEY_PRESS, XKey::RightShift);
    otherPosts(XCB_KEY_RELEASE, XKey::Shift);
    otherPosts(XCB_KEY_RELEASE, XKey::RightShift);
    EXPECT_EQ(user->modifiers(), 0u);
    pressShortcut(KeyS, Modifier::Shift);
    EXPECT_EQ(received(), "Shift down; S down Shift; Shift up Shift");
}

TEST_F(HeldModifiers, one_that_stood_in_at_the_end_is_not_left_down)
{
    userPresses(XKey::Shift);
    pressShortcut(KeyA, 0);
    user->release(XKey::Shift);
    stop();
    EXPECT_TRUE(user->keysDown().none());
    user->press(XKey::Shift);
    user->release(XKey::Shift);
    EXPECT_EQ(user->modifiers(), 0u);
}

} // namespace kestrel::test
