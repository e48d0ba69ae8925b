#include "platform/macos/QuartzKeyEvents.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using Direction = KeyEvents::Direction;
using AutoRepeat = KeyEvents::AutoRepeat;

constexpr KeyCode KeyCodeOfS = 1;

std::int64_t field(const CFHolder<CGEventRef>& event, CGEventField which)
{
    return CGEventGetIntegerValueField(event.get(), which);
}

TEST(QuartzKeyEvents, an_event_carries_its_key_its_direction_and_exactly_the_given_flags)
{
    const auto down
        = QuartzKeyEvents::event(KeyCodeOfS, Direction::Down, Modifier::Command, AutoRepeat::No);
    ASSERT_TRUE(down);
    EXPECT_EQ(CGEventGetType(down.get()), kCGEventKeyDown);
    EXPECT_EQ(field(down, kCGKeyboardEventKeycode), KeyCodeOfS);
    EXPECT_EQ(CGEventGetFlags(down.get()), kCGEventFlagMaskCommand);

    const auto up = QuartzKeyEvents::event(KeyCodeOfS, Direction::Up, 0, AutoRepeat::No);
    ASSERT_TRUE(up);
    EXPECT_EQ(CGEventGetType(up.get()), kCGEventKeyUp);
    EXPECT_EQ(CGEventGetFlags(up.get()), CGEventFlags { 0 });
}

TEST(QuartzKeyEvents, auto_repeat_marks_the_down_and_leaves_the_up_unmarked)
{
    const auto repeated = QuartzKeyEvents::event(KeyCodeOfS, Direction::Down, 0, AutoRepeat::Yes);
    const auto first = QuartzKeyEvents::event(KeyCodeOfS, Direction::Down, 0, AutoRepeat::No);
    const auto up = QuartzKeyEvents::event(KeyCodeOfS, Direction::Up, 0, AutoRepeat::Yes);
    EXPECT_EQ(field(repeated, kCGKeyboardEventAutorepeat), 1);
    EXPECT_EQ(field(first, kCGKeyboardEventAutorepeat), 0);
    EXPECT_EQ(field(up, kCGKeyboardEventAutorepeat), 0);
}

TEST(QuartzKeyEvents, a_bare_event_comes_from_a_source_with_the_combined_session_state)
{
    const auto event = QuartzKeyEvents::bareEvent(ModifierKey::Command, Direction::Up);
    ASSERT_TRUE(event);
    EXPECT_EQ(field(event, kCGKeyboardEventKeycode), ModifierKey::Command);
    EXPECT_EQ(field(event, kCGEventSourceStateID), kCGEventSourceStateCombinedSessionState);
}

} // namespace
} // namespace kestrel::test
