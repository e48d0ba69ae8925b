#include "platform/macos/ApplicationMenu.h"

#import <AppKit/AppKit.h>

namespace kestrel {

namespace {
void dropShortcuts(NSMenu* menu)
{
    for (NSMenuItem* item in menu.itemArray) {
        item.keyEquivalent = @"";
        dropShortcuts(item.submenu);
    }
}
} // namespace

void dropApplicationMenuShortcuts()
{
    dropShortcuts(NSApp.mainMenu);
}

} // namespace kestrel
