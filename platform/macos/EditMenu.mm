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

// True for a file panel, and for what it opens over itself. Open panels are save panels too.
bool belongsToFilePanel(NSWindow* window)
{
    while (window && ![window isKindOfClass:NSSavePanel.class])
        window = window.sheetParent ? window.sheetParent : window.parentWindow;
    return window != nil;
}
} // namespace

// A panel may be a sheet, or a window beside others that hold capture fields. Either way it has the
// keyboard when it is the key window.
void offerEditMenuToFilePanels()
{
    NSMenuItem* const item = makeEditMenu();
    auto* const center = NSNotificationCenter.defaultCenter;
    [center addObserverForName:NSWindowDidBecomeKeyNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification* notification) {
                        // An item may be in one menu only. Qt replaces the main menu at times.
                        remove(item);
                        if (belongsToFilePanel(notification.object))
                            [NSApp.mainMenu addItem:item];
                    }];
    [center addObserverForName:NSWindowDidResignKeyNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification*) { remove(item); }];
}

} // namespace kestrel
