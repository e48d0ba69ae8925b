#include "platform/Platform.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

TEST(LaunchFiles, have_arrived_when_the_launch_is_over_and_only_once)
{
    int calls = 0;
    afterFilesOfLaunch([&calls] { ++calls; });
    EXPECT_EQ(calls, 0);
    for (int i = 0; i < 2; ++i)
        [NSNotificationCenter.defaultCenter
            postNotificationName:NSApplicationDidFinishLaunchingNotification
                          object:nil];
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace kestrel::test
