#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/KeysDown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

// One studio, online, for all tests of the suite.
class MainPath : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_studio = std::make_unique<RunningStudio>();
        s_studio->studio.assign({ "1", "A" });
        s_studio->studio.assign({ "2", "Command+C", "Option+F5", "A", "Shift+Command+Z" });
        s_studio->studio.assign({ "6", "Command+S" });
        s_studio->startEverything();
        ASSERT_TRUE(s_studio->isAnswered()) << "the link did not come up";
    }
    static void TearDownTestSuite() { s_studio.reset(); }

    void TearDown() override
    {
        EXPECT_THAT(stage::keysDown(studio().studio.displayName()), IsEmpty());
    }

    static RunningStudio& studio() { return *s_studio; }

private:
    static inline std::unique_ptr<RunningStudio> s_studio;
};

TEST_F(MainPath, a_press_arrives_with_its_modifier_and_the_release_without)
{
    EXPECT_THAT(studio().keysAfter("press 6"),
        ElementsAre("down Super_L", "down S Command", "up Super_L Command"));
    EXPECT_THAT(studio().keysAfter("release 6"), ElementsAre("up S"));
}

TEST_F(MainPath, four_shortcuts_arrive_in_order_and_are_released_in_the_same_order)
{
    EXPECT_THAT(studio().keysAfter("press 2"),
        ElementsAre("down Super_L", "down C Command", "up Super_L Command", //
            "down Alt_L", "down F5 Option", "up Alt_L Option", //
            "down A", //
            "down Shift_L", "down Super_L Shift", "down Z Shift+Command",
            "up Shift_L Shift+Command", "up Super_L Command"));
    EXPECT_THAT(studio().keysAfter("release 2"), ElementsAre("up C", "up F5", "up A", "up Z"));
}

TEST_F(MainPath, a_held_key_is_pressed_once)
{
    EXPECT_THAT(studio().keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_THAT(studio().workstation->linesUntilQuiet(milliseconds(1500)), IsEmpty());
    EXPECT_THAT(studio().keysAfter("release 1"), ElementsAre("up A"));
}

TEST_F(MainPath, a_key_without_shortcuts_types_nothing)
{
    EXPECT_THAT(studio().strayKeysAfter("press 3"), IsEmpty());
    EXPECT_THAT(studio().strayKeysAfter("release 3"), IsEmpty());
}

TEST_F(MainPath, nothing_is_typed_while_another_window_is_in_front)
{
    {
        const auto other = studio().startOtherApplication();
        EXPECT_THAT(studio().strayKeysAfter("press 6"), IsEmpty());
        EXPECT_THAT(studio().strayKeysAfter("release 6"), IsEmpty());
        EXPECT_THAT(studio().strayKeys(*other), IsEmpty());
    }
    studio().waitUntilInFront("Pro Tools");
    EXPECT_THAT(studio().keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_THAT(studio().keysAfter("release 1"), ElementsAre("up A"));
}

TEST_F(MainPath, what_is_held_is_let_go_when_the_workstation_loses_the_front)
{
    EXPECT_THAT(studio().keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_FALSE(stage::keysDown(studio().studio.displayName()).empty());
    const auto other = studio().startOtherApplication();
    EXPECT_TRUE(studio().allKeysComeUp());
    // The focus has moved by then, so the other window may receive the key-up.
    EXPECT_THAT(studio().strayKeys(*other), AnyOf(IsEmpty(), ElementsAre("up A")));
    EXPECT_THAT(studio().strayKeysAfter("release 1"), IsEmpty());
    EXPECT_THAT(studio().strayKeys(*other), IsEmpty());
}

TEST_F(MainPath, noise_from_the_console_types_nothing_and_leaves_the_link_up)
{
    for (const char* noise : { "send 00", "send F0 F7", "send B0 2F 45", "send 90 40 40",
             "send B0 0F", "send FF FF FF FF", "send F0 00 00 66 05 12" })
        studio().console->writeLine(noise);
    EXPECT_THAT(studio().strayKeysAfter("send B0 0F 41"), IsEmpty());
    EXPECT_THAT(studio().keysAfter("send B0 0F 40 2F 40"), ElementsAre("down A"));
    EXPECT_THAT(studio().keysAfter("send B0 0F 40 2F 00"), ElementsAre("up A"));
    EXPECT_TRUE(studio().isAnswered());
}

} // namespace
} // namespace kestrel::test
