#include "platform/Platform.h"
#include "platform/SessionFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

constexpr const char* RaiseProcess = "QT_MAC_SET_RAISE_PROCESS";
constexpr const char* Transform = "QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM";

TEST(Session, raising_a_window_does_not_activate_the_program)
{
    ::unsetenv(RaiseProcess);
    EXPECT_FALSE(prepareSession());
    EXPECT_STREQ(std::getenv(RaiseProcess), "0");
}

TEST(Session, launching_does_not_activate_the_program)
{
    ::unsetenv(Transform);
    EXPECT_FALSE(prepareSession());
    EXPECT_STREQ(std::getenv(Transform), "1");
    ::unsetenv(Transform);
}

TEST(Session, what_the_user_has_chosen_stays)
{
    ::setenv(RaiseProcess, "1", 1);
    ::setenv(Transform, "", 1);
    EXPECT_FALSE(prepareSession());
    EXPECT_STREQ(std::getenv(RaiseProcess), "1");
    EXPECT_STREQ(std::getenv(Transform), "");
    ::unsetenv(RaiseProcess);
    ::unsetenv(Transform);
}

TEST(Session, its_folder_is_one_of_the_user_that_the_system_does_not_clean)
{
    EXPECT_TRUE(sessionFolder().ends_with("/Library/Application Support")) << sessionFolder();
}

} // namespace
} // namespace kestrel::test
