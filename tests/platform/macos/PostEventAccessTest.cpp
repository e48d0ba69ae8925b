#include "platform/macos/PostEventAccess.h"

#include "tests/platform/macos/stand-ins/Permission.h"
#include "tests/support/ManualMainLoop.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;

class PostEventAccessTest : public testing::Test {
protected:
    PostEventAccessTest() { permission() = {}; }

    std::shared_ptr<PostEventAccess> make()
    {
        auto access = std::make_shared<PostEventAccess>(mainLoop, [this] { return now; });
        permission().askings = 0;
        return access;
    }

    PostEventAccess::Clock::time_point now;
    ManualMainLoop mainLoop;
};

TEST_F(PostEventAccessTest, either_grant_is_enough)
{
    EXPECT_FALSE(make()->ask());
    permission().accessibility = true;
    EXPECT_TRUE(make()->ask());
    permission() = {};
    permission().postEvents = true;
    EXPECT_TRUE(make()->ask());
}

TEST_F(PostEventAccessTest, a_grant_is_assumed_without_asking)
{
    permission().accessibility = true;
    const auto access = make();
    now += 1s;
    EXPECT_TRUE(access->assumed());
    mainLoop.turn();
    EXPECT_EQ(permission().askings, 0);
}

TEST_F(PostEventAccessTest, a_grant_of_more_than_a_second_is_renewed_once_after_the_call)
{
    permission().accessibility = true;
    const auto access = make();
    now += 1001ms;
    permission().accessibility = false;
    EXPECT_TRUE(access->assumed());
    EXPECT_TRUE(access->assumed());
    EXPECT_EQ(permission().askings, 0);
    EXPECT_EQ(mainLoop.turn(), 1);
    EXPECT_EQ(permission().askings, 1);
    EXPECT_FALSE(access->assumed());
}

TEST_F(PostEventAccessTest, a_grant_that_still_holds_is_renewed_again_a_second_later)
{
    permission().accessibility = true;
    const auto access = make();
    for (int i = 0; i < 2; ++i) {
        now += 1001ms;
        EXPECT_TRUE(access->assumed());
        EXPECT_EQ(mainLoop.turn(), 1);
        EXPECT_TRUE(access->assumed());
        EXPECT_EQ(mainLoop.turn(), 0);
    }
}

TEST_F(PostEventAccessTest, a_refusal_is_asked_about_at_every_key)
{
    const auto access = make();
    EXPECT_FALSE(access->assumed());
    EXPECT_FALSE(access->assumed());
    EXPECT_EQ(permission().askings, 2);
    permission().accessibility = true;
    EXPECT_TRUE(access->assumed());
}

TEST_F(PostEventAccessTest, a_renewal_outlives_what_it_would_renew)
{
    permission().accessibility = true;
    auto access = make();
    now += 2s;
    EXPECT_TRUE(access->assumed());
    access.reset();
    mainLoop.turn();
    EXPECT_EQ(permission().askings, 0);
}

} // namespace
} // namespace kestrel::test
