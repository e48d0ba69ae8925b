#include "platform/macos/ApplicationMenu.h"

#import <AppKit/AppKit.h>

namespace kestrel {

void dropApplicationMenuShortcuts()
{
    for (NSMenuItem* menu in NSApp.mainMenu.itemArray) {
        for (NSMenuItem* item in menu.submenu.itemArray)
            item.keyEquivalent = @"";
    }
}

} // namespace kestrel
