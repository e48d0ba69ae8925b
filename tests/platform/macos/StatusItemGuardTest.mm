#include "platform/macos/StatusItemGuard.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

// A stand-in for the class of Qt, which these tests do not link.
@interface QStatusItemDelegate : NSObject
@property int asked;
- (void)statusItemClicked;
- (void)statusItemMenuBeganTracking:(NSNotification*)notification;
- (void)unrelated;
@end

@implementation QStatusItemDelegate
- (void)statusItemClicked
{
    ++self.asked;
}
- (void)statusItemMenuBeganTracking:(NSNotification*)notification
{
    (void)notification;
    ++self.asked;
}
- (void)unrelated
{
    ++self.asked;
}
@end

namespace kestrel::test {
namespace {

TEST(StatusItemGuard, keeps_the_toolkit_from_looking_at_the_event_and_leaves_the_rest)
{
    QStatusItemDelegate* delegate = [[QStatusItemDelegate alloc] init];
    guardStatusItem();
    [delegate statusItemClicked];
    [delegate statusItemMenuBeganTracking:[NSNotification notificationWithName:@"menu" object:nil]];
    EXPECT_EQ(delegate.asked, 0);
    [delegate unrelated];
    EXPECT_EQ(delegate.asked, 1);
}

} // namespace
} // namespace kestrel::test
