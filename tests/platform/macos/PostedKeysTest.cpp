#include "platform/macos/QuartzKeyEvents.h"
#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Calls.h"
#include "tests/platform/macos/stand-ins/Permission.h"
#include "tests/platform/macos/stand-ins/PostedEvents.h"
#include "tests/support/ManualMainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {

static void PrintTo(const PostedEvent& event, std::ostream* out)
{
    *out << "tap " << event.tap << " key " << event.keyCode << (event.down ? " down" : " up")
         << std::hex << " flags " << event.flags << (event.autoRepeat ? " repeat" : "");
    if (event.source)
        *out << " source " << *event.source;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Direction = KeyEvents::Direction;
using AutoRepeat = KeyEvents::AutoRepeat;
using Result = KeyEvents::Result;

constexpr KeyCode LetterS = 1;

class PostedKeysTest : public testing::Test {
protected:
    PostedKeysTest()
    {
        permission() = {};
        permission().accessibility = true;
        // What the user holds must not get into an event with flags of its own.
        postedEvents() = { .events = {}, .held = kCGEventFlagMaskShift };
    }
    ~PostedKeysTest() override
    {
        calls() = {};
        EXPECT_EQ(CFObject::count(), m_objectsBefore) << "an event or a source was not released";
    }

    const std::vector<PostedEvent>& posted = postedEvents().events;
    ManualMainLoop mainLoop;
    QuartzKeyEvents keys { std::make_shared<PostEventAccess>(mainLoop) };

private:
    int m_objectsBefore = CFObject::count();
};

TEST_F(PostedKeysTest, a_key_with_flags_goes_without_a_source_to_the_session_tap)
{
    EXPECT_EQ(
        keys.post(LetterS, Direction::Down, Modifier::Command, AutoRepeat::Yes), Result::Posted);
    EXPECT_EQ(keys.post(LetterS, Direction::Up, 0, AutoRepeat::Yes), Result::Posted);
    EXPECT_THAT(posted,
        ElementsAre(PostedEvent { .tap = kCGSessionEventTap,
                        .keyCode = LetterS,
                        .down = true,
                        .flags = kCGEventFlagMaskCommand,
                        .autoRepeat = true,
                        .source = std::nullopt },
            PostedEvent { .tap = kCGSessionEventTap,
                .keyCode = LetterS,
                .down = false,
                .flags = 0,
                .autoRepeat = false,
                .source = std::nullopt }));
}

TEST_F(PostedKeysTest, a_bare_key_goes_from_the_combined_session_state_to_the_HID_tap)
{
    EXPECT_EQ(keys.postBare(ModifierKey::Command, Direction::Up), Result::Posted);
    EXPECT_EQ(keys.postBare(ModifierKey::Shift, Direction::Down), Result::Posted);
    EXPECT_THAT(posted,
        ElementsAre(PostedEvent { .tap = kCGHIDEventTap,
                        .keyCode = ModifierKey::Command,
                        .down = false,
                        .flags = kCGEventFlagMaskShift, // as the event was made
                        .autoRepeat = false,
                        .source = kCGEventSourceStateCombinedSessionState },
            PostedEvent { .tap = kCGHIDEventTap,
                .keyCode = ModifierKey::Shift,
                .down = true,
                .flags = kCGEventFlagMaskShift,
                .autoRepeat = false,
                .source = kCGEventSourceStateCombinedSessionState }));
}

TEST_F(PostedKeysTest, without_the_permission_nothing_is_posted)
{
    permission() = {};
    QuartzKeyEvents refused { std::make_shared<PostEventAccess>(mainLoop) };
    EXPECT_EQ(refused.post(LetterS, Direction::Down, 0, AutoRepeat::No), Result::NotPermitted);
    EXPECT_EQ(refused.postBare(ModifierKey::Command, Direction::Up), Result::NotPermitted);
    EXPECT_THAT(posted, IsEmpty());
}

TEST_F(PostedKeysTest, an_event_that_cannot_be_made_is_not_posted)
{
    calls().failing = "CGEventCreateKeyboardEvent";
    EXPECT_EQ(keys.post(LetterS, Direction::Down, 0, AutoRepeat::No), Result::Unavailable);
    EXPECT_EQ(keys.postBare(ModifierKey::Command, Direction::Up), Result::Unavailable);
    EXPECT_THAT(posted, IsEmpty());
}

TEST_F(PostedKeysTest, a_modifier_is_let_go_even_if_there_is_no_source_for_it)
{
    calls().failing = "CGEventSourceCreate";
    EXPECT_EQ(keys.postBare(ModifierKey::Command, Direction::Up), Result::Posted);
    ASSERT_EQ(posted.size(), 1U);
    EXPECT_EQ(posted[0].tap, kCGHIDEventTap);
    EXPECT_EQ(posted[0].source, std::nullopt);
}

} // namespace
} // namespace kestrel::test
