#include "platform/linux/x11/XkbProtocol.h"
#include "tests/platform/linux/x11/X11Bench.h"

#include <xcb/xtest.h>

namespace kestrel::test {

namespace {
using Result = KeyEvents::Result;

class KeyRepeat : public X11Bench {
protected:
    // Waits longer than the 660 ms after which the server begins to repeat.
    std::string heldForAWhile()
    {
        EXPECT_EQ(press(KeyA), Result::Posted);
        loop.runFor(std::chrono::milliseconds(1500));
        std::string keys = received();
        EXPECT_EQ(release(KeyA), Result::Posted);
        EXPECT_EQ(received(), "A up");
        return keys;
    }
    // Posts a key through XTEST, like another program.
    void post(bool down, xcb_keycode_t key)
    {
        xcb_test_fake_input(user->xcb(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key,
            XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        user->synchronise();
    }
    bool repeatsWhenHeldThroughXTest()
    {
        workstation->keys();
        post(true, XKey::A);
        std::string keys;
        const bool repeated = loop.runUntil([&] {
            keys += workstation->keys();
            return keys.find("A down; ") != std::string::npos || keys.size() > 12;
        });
        post(false, XKey::A);
        workstation->keys();
        return repeated;
    }
};
} // namespace

TEST_F(KeyRepeat, a_key_that_is_held_for_a_while_is_pressed_once)
{
    EXPECT_EQ(heldForAWhile(), "A down");
}

TEST_F(KeyRepeat, not_even_when_another_program_typed_through_XTest_just_before)
{
    stop();
    post(true, XKey::A);
    post(false, XKey::A);
    start();
    settle();
    workstation->keys();
    EXPECT_EQ(heldForAWhile(), "A down");
}

TEST_F(KeyRepeat, the_users_own_keyboard_goes_on_repeating)
{
    EXPECT_EQ(heldForAWhile(), "A down");
    EXPECT_TRUE(user->repeats(user->device()));
    user->press(XKey::A);
    std::string keys;
    EXPECT_TRUE(loop.runUntil([&] {
        keys += workstation->keys();
        return keys.find("A up") != std::string::npos;
    }));
    user->release(XKey::A);
}

TEST_F(KeyRepeat, everything_repeats_as_before_when_the_adapter_has_ended)
{
    EXPECT_EQ(heldForAWhile(), "A down");
    stop();
    EXPECT_TRUE(user->repeats(user->device()));
    EXPECT_TRUE(loop.runUntil([this] { return user->repeats(user->xtestDevice()); }));
    EXPECT_TRUE(repeatsWhenHeldThroughXTest());
}

TEST_F(KeyRepeat, everything_repeats_as_before_when_the_program_was_killed)
{
    stop();
    ASSERT_TRUE(loop.runUntil([this] { return user->repeats(user->xtestDevice()); }));
    stage::ChildProcess holder({ KESTREL_KEY_HOLDER }, server->environment());
    ASSERT_TRUE(holder.waitForLineWith("held", stage::milliseconds(10000)));
    EXPECT_FALSE(user->repeats(user->xtestDevice()));
    EXPECT_TRUE(user->repeats(user->device()));
    holder.signal(SIGKILL);
    ASSERT_EQ(holder.wait(stage::milliseconds(5000)), 128 + SIGKILL);

    EXPECT_TRUE(loop.runUntil([this] { return user->repeats(user->xtestDevice()); }));
    EXPECT_TRUE(user->repeats(user->device()));
    // The keyboard that was used last sets whether the server repeats held keys.
    user->press(23);
    user->release(23);
    for (const xcb_keycode_t key : { xcb_keycode_t(38), xcb_keycode_t(39), xcb_keycode_t(133) })
        post(false, key);
    EXPECT_TRUE(repeatsWhenHeldThroughXTest());
}

TEST_F(KeyRepeat, another_instance_that_ends_takes_nothing_away)
{
    {
        const auto other = std::make_shared<X11Session>(loop);
        XTestKeyEvents otherEvents(other);
        ASSERT_TRUE(other->connection.ensureOpen());
    }
    settle();
    EXPECT_EQ(heldForAWhile(), "A down");
}

TEST_F(KeyRepeat, an_instance_started_later_goes_on_without_the_first)
{
    auto other = std::make_shared<X11Session>(loop);
    auto otherEvents = std::make_unique<XTestKeyEvents>(other);
    ASSERT_TRUE(other->connection.ensureOpen());
    otherEvents.swap(keyEvents);
    other.swap(session);
    workspace.reset();
    otherEvents.reset();
    other.reset(); // the first one; the server switches repeating on
    loop.runFor(std::chrono::milliseconds(100));
    EXPECT_EQ(heldForAWhile(), "A down");
}

TEST_F(KeyRepeat, a_setting_of_the_user_for_all_keyboards_leaves_XTest_quiet)
{
    static constexpr std::uint8_t NoKeys[32] {};
    xcb_xkb_set_controls(user->xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
        XCB_XKB_BOOL_CTRL_REPEAT_KEYS, XCB_XKB_BOOL_CTRL_REPEAT_KEYS, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
        0, 0, 0, 0, 0, NoKeys);
    user->synchronise();
    EXPECT_TRUE(loop.runUntil([this] { return !user->repeats(user->xtestDevice()); }));
    EXPECT_EQ(heldForAWhile(), "A down");
    EXPECT_TRUE(user->repeats(user->device()));
}

} // namespace kestrel::test
