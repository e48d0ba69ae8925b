#include "platform/macos/EditMenu.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

NSWindow* plainWindow()
{
    return [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                       styleMask:NSWindowStyleMaskTitled
                                         backing:NSBackingStoreBuffered
                                           defer:YES];
}

class EditMenu : public testing::Test {
protected:
    EditMenu()
    {
        NSApplication.sharedApplication.mainMenu = [[NSMenu alloc] initWithTitle:@""];
        static const bool isOffered = (offerEditMenuToFilePanels(), true);
        (void)isOffered;
    }
    ~EditMenu() override { NSApp.mainMenu = nil; }

    static void tell(NSNotificationName name, NSWindow* window)
    {
        [NSNotificationCenter.defaultCenter postNotificationName:name object:window];
    }
    static void becomeKey(NSWindow* window) { tell(NSWindowDidBecomeKeyNotification, window); }
    static void resignKey(NSWindow* window) { tell(NSWindowDidResignKeyNotification, window); }
    // The item of the shortcut in the main menu, such as "paste:" for "v"; empty if there is none.
    static std::string actionOf(NSString* key)
    {
        for (NSMenuItem* menu in NSApp.mainMenu.itemArray) {
            for (NSMenuItem* item in menu.submenu.itemArray) {
                if ([item.keyEquivalent isEqualToString:key])
                    return NSStringFromSelector(item.action).UTF8String;
            }
        }
        return {};
    }
};

TEST_F(EditMenu, is_there_while_a_save_panel_or_an_open_panel_has_the_keyboard)
{
    for (NSWindow* panel : { static_cast<NSWindow*>([NSSavePanel savePanel]),
             static_cast<NSWindow*>([NSOpenPanel openPanel]) }) {
        becomeKey(panel);
        EXPECT_EQ(actionOf(@"v"), "paste:");
        EXPECT_EQ(actionOf(@"a"), "selectAll:");
        EXPECT_EQ(actionOf(@"z"), "undo:");
        EXPECT_EQ(actionOf(@"Z"), "redo:");
        resignKey(panel);
        EXPECT_EQ(actionOf(@"v"), "");
    }
}

TEST_F(EditMenu, is_there_once_though_a_panel_gets_the_keyboard_twice)
{
    NSWindow* panel = [NSSavePanel savePanel];
    becomeKey(panel);
    becomeKey(panel);
    EXPECT_EQ(NSApp.mainMenu.numberOfItems, 1);
    resignKey(panel);
    EXPECT_EQ(NSApp.mainMenu.numberOfItems, 0);
}

TEST_F(EditMenu, leaves_the_shortcuts_to_every_other_window)
{
    NSWindow* panel = [NSSavePanel savePanel];
    becomeKey(panel);
    NSWindow* setup = plainWindow();
    becomeKey(setup); // the panel is still open
    EXPECT_EQ(actionOf(@"v"), "");
    resignKey(setup);
    EXPECT_EQ(actionOf(@"v"), "");
    becomeKey(panel);
    EXPECT_EQ(actionOf(@"v"), "paste:");
    resignKey(panel);
}

TEST_F(EditMenu, serves_what_a_panel_opens_over_itself)
{
    NSWindow* panel = [NSSavePanel savePanel];
    NSWindow* field = plainWindow();
    [panel addChildWindow:field ordered:NSWindowAbove];
    becomeKey(field);
    EXPECT_EQ(actionOf(@"v"), "paste:");
    resignKey(field);
    [panel removeChildWindow:field];
}

} // namespace
} // namespace kestrel::test
