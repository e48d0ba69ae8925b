#include "platform/linux/x11/XTestControls.h"
#include "tests/platform/linux/x11/X11Bench.h"

namespace kestrel::test {

namespace {
constexpr std::uint32_t Repeat = XCB_XKB_BOOL_CTRL_REPEAT_KEYS;
constexpr std::uint32_t Bounce = XCB_XKB_BOOL_CTRL_BOUNCE_KEYS;
constexpr std::uint32_t Slow = XCB_XKB_BOOL_CTRL_SLOW_KEYS;

// The controls that the user sets for all keyboards, before and while the adapter runs.
class UserControls : public X11Bench {
protected:
    // Of the controls that are named by `which`, those in `enabled` are on from now on.
    void set(std::uint32_t which, std::uint32_t enabled,
        xcb_xkb_device_spec_t device = XCB_XKB_ID_USE_CORE_KBD)
    {
        static constexpr std::uint8_t NoKeys[32] {};
        xcb_xkb_set_controls(user->xcb(), device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, which, enabled,
            0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, NoKeys);
        user->synchronise();
        if (session)
            settle();
    }
    // Those of the unwanted controls that are on for the XTEST keyboard.
    [[nodiscard]] std::uint32_t onXTest() const
    {
        const auto cookie = xcb_xkb_get_controls(user->xcb(), user->xtestDevice());
        const std::unique_ptr<xcb_xkb_get_controls_reply_t, decltype(&::free)> reply(
            xcb_xkb_get_controls_reply(user->xcb(), cookie, nullptr), &::free);
        return reply ? reply->enabledControls & XTestControls::Unwanted : ~0U;
    }
    // True if these and no others are on once the server has noticed the end of the adapter.
    [[nodiscard]] bool areLeft(std::uint32_t controls)
    {
        const bool come = loop.runUntil([&] { return onXTest() == controls; });
        loop.runFor(std::chrono::milliseconds(100));
        return come && onXTest() == controls;
    }
    void beginWith(std::uint32_t controls)
    {
        stop();
        set(XTestControls::Unwanted, controls);
        ASSERT_TRUE(areLeft(controls));
        start();
        settle();
        ASSERT_EQ(onXTest(), 0U);
    }
};
} // namespace

TEST_F(UserControls, come_back_when_the_adapter_ends)
{
    beginWith(Repeat | Bounce | Slow);
    stop();
    EXPECT_TRUE(areLeft(Repeat | Bounce | Slow));
}

TEST_F(UserControls, that_the_user_has_switched_off_meanwhile_stay_off)
{
    beginWith(Repeat | Bounce | Slow);
    set(Bounce, 0);
    stop();
    EXPECT_TRUE(areLeft(Repeat | Slow));

    beginWith(Repeat | Bounce | Slow);
    set(Repeat | Slow, 0);
    stop();
    EXPECT_TRUE(areLeft(Bounce));
}

TEST_F(UserControls, that_the_user_has_switched_on_meanwhile_stay_on)
{
    beginWith(Repeat);
    set(Slow, Slow);
    EXPECT_TRUE(areLeft(0)) << "while the adapter runs";
    stop();
    EXPECT_TRUE(areLeft(Repeat | Slow));
}

TEST_F(UserControls, that_the_user_has_switched_off_and_on_again_come_back)
{
    beginWith(Repeat | Bounce);
    set(Repeat | Bounce, 0);
    set(Repeat | Bounce, Repeat | Bounce);
    EXPECT_TRUE(areLeft(0)) << "while the adapter runs";
    stop();
    EXPECT_TRUE(areLeft(Repeat | Bounce));
}

// A setting for one keyboard alone does not touch the XTEST keyboard, so no event tells of it
// there.
TEST_F(UserControls, that_the_user_has_switched_off_and_on_again_on_one_keyboard_come_back)
{
    beginWith(Repeat | Bounce);
    set(Bounce, 0, user->device());
    set(Bounce, Bounce, user->device());
    EXPECT_TRUE(areLeft(0)) << "while the adapter runs";
    stop();
    EXPECT_TRUE(areLeft(Repeat | Bounce));
}

TEST_F(UserControls, that_the_user_has_switched_off_on_one_keyboard_stay_off)
{
    beginWith(Repeat | Bounce);
    set(Bounce, 0, user->device());
    stop();
    EXPECT_TRUE(areLeft(Repeat));
}

TEST_F(UserControls, that_the_user_has_switched_on_for_one_keyboard_alone_stay_off)
{
    beginWith(Repeat);
    set(Bounce, Bounce, user->device());
    set(Bounce, 0, user->device());
    set(Bounce, Bounce, user->device());
    stop();
    EXPECT_TRUE(areLeft(Repeat));
}

} // namespace kestrel::test
