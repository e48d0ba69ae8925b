#include "platform/macos/AppKitWindowTraits.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class AppKitWindowTraitsTest : public testing::Test {
protected:
    void make(Class windowClass)
    {
        [NSApplication sharedApplication];
        window = [[windowClass alloc]
            initWithContentRect:NSMakeRect(0, 0, 782, 220)
                      styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskResizable
                        backing:NSBackingStoreBuffered
                          defer:NO];
        window.releasedWhenClosed = NO;
        view = reinterpret_cast<NativeWindow>((__bridge void*)window.contentView);
    }

    NSWindow* window = nil;
    NativeWindow view = 0;
    AppKitWindowTraits traits;
};

TEST_F(AppKitWindowTraitsTest, the_content_keeps_the_given_proportions)
{
    make(NSPanel.class);
    traits.setContentAspectRatio(view, 782, 220);
    EXPECT_EQ(window.contentAspectRatio.width, 782);
    EXPECT_EQ(window.contentAspectRatio.height, 220);
}

TEST_F(AppKitWindowTraitsTest, a_floating_window_shows_everywhere_and_stays)
{
    make(NSPanel.class);
    traits.setFloating(view);
    EXPECT_EQ(window.level, NSFloatingWindowLevel);
    EXPECT_TRUE(window.collectionBehavior & NSWindowCollectionBehaviorCanJoinAllSpaces);
    EXPECT_TRUE(window.collectionBehavior & NSWindowCollectionBehaviorFullScreenAuxiliary);
    EXPECT_FALSE(window.hidesOnDeactivate);
    EXPECT_FALSE(window.canHide);
}

TEST_F(AppKitWindowTraitsTest, a_panel_that_is_never_focused_activates_nothing)
{
    make(NSPanel.class);
    traits.setNeverFocused(view);
    EXPECT_TRUE(window.styleMask & NSWindowStyleMaskNonactivatingPanel);
    EXPECT_TRUE(window.styleMask & NSWindowStyleMaskResizable);
    EXPECT_TRUE(static_cast<NSPanel*>(window).becomesKeyOnlyIfNeeded);
}

TEST_F(AppKitWindowTraitsTest, a_window_that_is_no_panel_keeps_its_style)
{
    make(NSWindow.class);
    const NSWindowStyleMask before = window.styleMask;
    traits.setNeverFocused(view);
    EXPECT_EQ(window.styleMask, before);
}

} // namespace
} // namespace kestrel::test
