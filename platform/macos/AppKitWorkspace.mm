#include "platform/macos/AppKitWorkspace.h"

#include "platform/macos/FoundationText.h"

#import <AppKit/AppKit.h>

#include <utility>

@interface KestrelEventHandler : NSObject
@property (copy) void (^act)(void);
- (void)handle:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply;
@end

@implementation KestrelEventHandler
- (void)handle:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply
{
    (void)event;
    (void)reply;
    self.act();
}
@end

namespace kestrel {

namespace {
// Handles an Apple event of the core class in AppKit's place, from the time when the application
// runs: AppKit installs its own handlers when it starts. An empty `act` ends that.
CFHolder<CFTypeRef> handle(AEEventID event, std::function<void()> act)
{
    auto* const manager = NSAppleEventManager.sharedAppleEventManager;
    // The manager does not retain the handler of an earlier call.
    [manager removeEventHandlerForEventClass:kCoreEventClass andEventID:event];
    if (!act)
        return {};
    auto* const handler = [[KestrelEventHandler alloc] init];
    handler.act = ^{ act(); };
    __weak KestrelEventHandler* const present = handler;
    dispatch_async(dispatch_get_main_queue(), ^{
        KestrelEventHandler* const kept = present; // nil if it has been replaced meanwhile
        if (kept)
            [manager setEventHandler:kept
                         andSelector:@selector(handle:withReply:)
                       forEventClass:kCoreEventClass
                          andEventID:event];
    });
    return CFHolder<CFTypeRef>(CFBridgingRetain(handler));
}
} // namespace

// This runs at each press of a console key. The name of an application costs a message to the
// launch services the first time, so only active applications are asked for it.
void AppKitWorkspace::visitActiveApplications(const Visitor& visit)
{
    @autoreleasepool {
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            if (!application.active)
                continue;
            const char* name = application.localizedName.UTF8String; // valid until the pool drains
            if (!visit(name ? name : ""))
                return;
        }
    }
}

bool AppKitWorkspace::openFile(std::string_view path)
{
    @autoreleasepool {
        NSString* file = FoundationText::fromUtf8(path);
        if (file.length == 0) // fileURLWithPath: raises an exception for an empty path
            return false;
        return [NSWorkspace.sharedWorkspace openURL:[NSURL fileURLWithPath:file]];
    }
}

bool AppKitWorkspace::hideApplication()
{
    [NSApp hide:nil];
    return true;
}

bool AppKitWorkspace::isApplicationHidden() const
{
    return [NSApp isHidden];
}

void AppKitWorkspace::activateApplication()
{
    [NSApp activateIgnoringOtherApps:YES];
}

// AppKit's own handler would do no more than activate this program.
void AppKitWorkspace::setReopened(std::function<void()> reopened)
{
    m_reopening = handle(kAEReopenApplication, std::move(reopened));
}

// AppKit's own handler refuses while a modal window or a sheet is open. Otherwise it asks Qt, which
// refuses too and ends the event loop, and the system reports an interrupted log-out. This one
// reports no error, and the process ends.
void AppKitWorkspace::setQuitRequested(std::function<void()> quitRequested)
{
    m_quitting = handle(kAEQuitApplication, std::move(quitRequested));
}

} // namespace kestrel
