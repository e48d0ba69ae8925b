#include "platform/macos/AppleEventHandler.h"

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
void onMainQueue(std::function<void()> task)
{
    dispatch_async(dispatch_get_main_queue(), [task = std::move(task)] { task(); });
}
} // namespace

void AppleEventHandler::setAct(std::function<void()> act)
{
    auto* const manager = NSAppleEventManager.sharedAppleEventManager;
    const AEEventID event = m_eventID;
    m_installation.drop();
    // The handler of an earlier call may be installed.
    if (m_handler)
        [manager removeEventHandlerForEventClass:kCoreEventClass andEventID:event];
    m_handler = {};
    if (!act)
        return;
    auto* const handler = [[KestrelEventHandler alloc] init];
    handler.act = [act = std::move(act)] { act(); };
    m_handler = CFHolder<CFTypeRef>(CFBridgingRetain(handler));
    m_installation.set(
        [=] {
            [manager setEventHandler:handler
                         andSelector:@selector(handle:withReply:)
                       forEventClass:kCoreEventClass
                          andEventID:event];
        },
        onMainQueue);
}

} // namespace kestrel
