#include "platform/macos/AppKitWindowTraits.h"

#import <AppKit/AppKit.h>

// Not in AppKit's headers; respondsToSelector: is asked before the call.
@interface NSWindow (PreventsActivation)
- (void)_setPreventsActivation:(BOOL)prevents;
@end

namespace kestrel {

namespace {
NSWindow* windowOf(NativeWindow view)
{
    return ((__bridge NSView*)reinterpret_cast<void*>(view)).window;
}
} // namespace

void AppKitWindowTraits::setContentAspectRatio(NativeWindow view, int width, int height)
{
    windowOf(view).contentAspectRatio = NSMakeSize(width, height);
}

// Never set Qt's own attribute WA_MacAlwaysShowToolWindow on a window of this program: with it Qt
// moves floating windows to the normal level as soon as another application is active, which is
// nearly always the case here.
void AppKitWindowTraits::setFloating(NativeWindow view)
{
    NSWindow* window = windowOf(view);
    window.collectionBehavior = (window.collectionBehavior
                                    & ~NSUInteger { NSWindowCollectionBehaviorMoveToActiveSpace
                                        | NSWindowCollectionBehaviorFullScreenPrimary })
        | NSWindowCollectionBehaviorCanJoinAllSpaces
        | NSWindowCollectionBehaviorFullScreenAuxiliary;
    window.level = CGWindowLevelForKey(kCGFloatingWindowLevelKey);
    window.hidesOnDeactivate = NO;
    // The program hides itself to give the front back. Without this the panel would hide with it,
    // and could come back only together with all other windows.
    window.canHide = NO;
    window.releasedWhenClosed = NO;
}

// With Qt::WindowDoesNotAcceptFocus, Qt keeps the window from becoming key, and a panel never
// becomes main. But a click would still make this application active, and keys would no longer go
// to the workstation. Only an NSPanel (Qt::Tool, Qt::Dialog) can be kept from that, by its style.
void AppKitWindowTraits::setNeverFocused(NativeWindow view)
{
    NSWindow* window = windowOf(view);
    if (![window isKindOfClass:NSPanel.class])
        return;
    auto* panel = static_cast<NSPanel*>(window);
    panel.becomesKeyOnlyIfNeeded = YES;
    panel.styleMask |= NSWindowStyleMaskNonactivatingPanel;
    // AppKit passes this style to the window server only when it creates a panel. Qt created this
    // one without the style, so it takes effect only through this call.
    if ([panel respondsToSelector:@selector(_setPreventsActivation:)])
        [panel _setPreventsActivation:YES];
}

void AppKitWindowTraits::orderFront(NativeWindow view)
{
    [windowOf(view) orderFrontRegardless];
}

} // namespace kestrel
