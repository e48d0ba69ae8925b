#include "platform/macos/EditMenu.h"

#import <AppKit/AppKit.h>

namespace kestrel {

namespace {
NSMenuItem* makeEditMenu()
{
    auto* const menu = [[NSMenu alloc] initWithTitle:@"Edit"];
    const auto add = [menu](NSString* title, NSString* action, NSString* key) {
        [menu addItemWithTitle:title action:NSSelectorFromString(action) keyEquivalent:key];
    };
    add(@"Undo", @"undo:", @"z");
    add(@"Redo", @"redo:", @"Z");
    add(@"Cut", @"cut:", @"x");
    add(@"Copy", @"copy:", @"c");
    add(@"Paste", @"paste:", @"v");
    add(@"Select All", @"selectAll:", @"a");
    auto* const item = [[NSMenuItem alloc] initWithTitle:@"Edit" action:nil keyEquivalent:@""];
    item.submenu = menu;
    return item;
}

void remove(NSMenuItem* item)
{
    [item.menu removeItem:item];
}
} // namespace

void offerEditMenuToSheets()
{
    NSMenuItem* const item = makeEditMenu();
    auto* const center = NSNotificationCenter.defaultCenter;
    [center addObserverForName:NSWindowWillBeginSheetNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification*) {
                        // An item may be in one menu only. Qt replaces the main menu at times.
                        remove(item);
                        [NSApp.mainMenu addItem:item];
                    }];
    [center addObserverForName:NSWindowDidEndSheetNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification*) { remove(item); }];
}

} // namespace kestrel
