#include "platform/macos/LatencyCriticalActivity.h"

#import <Foundation/Foundation.h>

namespace kestrel {

LatencyCriticalActivity::LatencyCriticalActivity()
    : m_activity(CFBridgingRetain([NSProcessInfo.processInfo
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
        | NSActivityLatencyCritical
                          reason:@"Passing on key presses of the console"]))
{
}

LatencyCriticalActivity::~LatencyCriticalActivity()
{
    [NSProcessInfo.processInfo endActivity:(__bridge id<NSObject>)m_activity.get()];
}

} // namespace kestrel
