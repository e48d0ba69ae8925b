#include "platform/macos/SheetTitles.h"

#import <AppKit/AppKit.h>

namespace kestrel {

namespace {
void showTitle(NSWindow* sheet)
{
    if (![sheet isKindOfClass:NSOpenPanel.class])
        return;
    auto* const panel = static_cast<NSOpenPanel*>(sheet);
    if (panel.message.length == 0)
        panel.message = panel.title;
}
} // namespace

void showTitlesOfSheets()
{
    auto* const center = NSNotificationCenter.defaultCenter;
    [center addObserverForName:NSWindowWillBeginSheetNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification* notification) {
                        NSWindow* const window = notification.object;
                        // The panel becomes the window's sheet when it begins.
                        dispatch_async(
                            dispatch_get_main_queue(), ^{ showTitle(window.attachedSheet); });
                    }];
}

} // namespace kestrel
