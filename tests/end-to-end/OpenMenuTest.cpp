#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/StatusIcon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

// The menu has the keyboard while it is open, and Q is the mnemonic of Quit.
TEST(OpenMenu, closes_before_a_console_key_that_would_choose_an_entry)
{
    RunningStudio studio;
    studio.studio.assign({ "1", "Q" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    const stage::StatusIcon icon(studio.studio.displayName(), studio.studio.environment());
    static_cast<void>(icon.openMenu());
    studio.waitUntilInFront("Pro Tools");
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down Q"));
    icon.waitUntilMenuIsGone();
    static_cast<void>(icon.openMenu());
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up Q"));
    icon.waitUntilMenuIsGone();
    EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(0))) << "it has not quit";
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST(OpenMenu, stays_open_while_no_key_is_posted)
{
    RunningStudio studio;
    studio.studio.assign({ "1", "Q" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    const auto other = studio.startOtherApplication();
    const stage::StatusIcon icon(studio.studio.displayName(), studio.studio.environment());
    static_cast<void>(icon.openMenu());
    EXPECT_THAT(studio.strayKeysAfter("press 1"), IsEmpty());
    EXPECT_THROW(icon.waitUntilMenuIsGone(), std::runtime_error);
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(0)));
}

} // namespace
} // namespace kestrel::test
