#include "platform/macos/AppKitWorkspace.h"

#include "platform/macos/FoundationText.h"

#import <AppKit/AppKit.h>

@interface KestrelReopening : NSObject
@property (copy) void (^reopened)(void);
- (void)handle:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply;
@end

@implementation KestrelReopening
- (void)handle:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply
{
    (void)event;
    (void)reply;
    self.reopened();
}
@end

namespace kestrel {

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

void AppKitWorkspace::setReopened(std::function<void()> reopened)
{
    auto* const manager = NSAppleEventManager.sharedAppleEventManager;
    if (!reopened) {
        [manager removeEventHandlerForEventClass:kCoreEventClass andEventID:kAEReopenApplication];
        m_reopening = {};
        return;
    }
    auto* const reopening = [[KestrelReopening alloc] init];
    reopening.reopened = ^{ reopened(); };
    m_reopening = CFHolder<CFTypeRef>(CFBridgingRetain(reopening));
    // Installed once the application runs, because AppKit installs its own handler when it starts.
    // AppKit's handler would do no more than activate this program.
    dispatch_async(dispatch_get_main_queue(), ^{
        [manager setEventHandler:reopening
                     andSelector:@selector(handle:withReply:)
                   forEventClass:kCoreEventClass
                      andEventID:kAEReopenApplication];
    });
}

} // namespace kestrel
