#include "platform/macos/ApplicationMenu.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

NSMenuItem* item(NSString* title, NSString* keyEquivalent, NSArray<NSMenuItem*>* submenu = @[])
{
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:title
                                                  action:nil
                                           keyEquivalent:keyEquivalent];
    if (submenu.count > 0) {
        item.submenu = [[NSMenu alloc] initWithTitle:title];
        item.submenu.itemArray = submenu;
    }
    return item;
}

TEST(ApplicationMenu, loses_its_shortcuts_at_every_depth)
{
    NSMenuItem* quit = item(@"Quit", @"q");
    NSMenuItem* service = item(@"Service", @"e");
    NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
    [menu addItem:item(@"Program", @"", @[ item(@"Services", @"", @[ service ]), quit ])];
    NSApplication.sharedApplication.mainMenu = menu;
    dropApplicationMenuShortcuts();
    EXPECT_EQ(quit.keyEquivalent.length, 0u);
    EXPECT_EQ(service.keyEquivalent.length, 0u);
    NSApplication.sharedApplication.mainMenu = nil;
}

} // namespace
} // namespace kestrel::test
