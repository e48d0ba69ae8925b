#include "platform/macos/Activity.h"

#import <Foundation/Foundation.h>

namespace kestrel {

Activity::Activity(Kind kind)
    : m_activity(CFBridgingRetain([NSProcessInfo.processInfo
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
        | (kind == Kind::LatencyCritical ? NSActivityLatencyCritical : NSActivityOptions {})
                          reason:@"Waiting for the console and passing on its key presses"]))
{
}

Activity::~Activity()
{
    [NSProcessInfo.processInfo endActivity:(__bridge id<NSObject>)m_activity.get()];
}

} // namespace kestrel
