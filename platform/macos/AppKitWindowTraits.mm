#include "platform/macos/AppKitWindowTraits.h"

#import <AppKit/AppKit.h>

// Not in the headers of AppKit, and asked for before it is used.
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

// Qt has an attribute of its own for tool windows that stay (WA_MacAlwaysShowToolWindow). It must
// not be set on any window of this program: with it Qt drops every window that floats and stays to
// the normal level as soon as another application is active, which here is nearly always.
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
    // The program hides itself to give the front back. A window that is hidden with it could not be
    // shown again without bringing back the others.
    window.canHide = NO;
    window.releasedWhenClosed = NO;
}

// That the window refuses to be key or main is Qt's own doing, for Qt::WindowDoesNotAcceptFocus: it
// overrides canBecomeKeyWindow, which nobody else can for its windows, and a panel is never main.
// What it leaves out is that a click makes this application the active one, and keys then no
// longer go to the one in front before. Only a panel (Qt::Tool, Qt::Dialog) can be kept from that.
void AppKitWindowTraits::setNeverFocused(NativeWindow view)
{
    NSWindow* window = windowOf(view);
    if (![window isKindOfClass:NSPanel.class])
        return;
    auto* panel = static_cast<NSPanel*>(window);
    panel.becomesKeyOnlyIfNeeded = YES;
    panel.styleMask |= NSWindowStyleMaskNonactivatingPanel;
    // AppKit tells the window server of that style only while it makes a panel, and Qt made this
    // one without; set later, it takes effect through this alone.
    if ([panel respondsToSelector:@selector(_setPreventsActivation:)])
        [panel _setPreventsActivation:YES];
}

} // namespace kestrel
