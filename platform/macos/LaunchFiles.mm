#include "platform/Platform.h"

#import <AppKit/AppKit.h>

namespace kestrel {

// AppKit hands the delegate the files of the launch before it posts this notification.
void afterFilesOfLaunch(const std::function<void()>& then)
{
    const std::function<void()> work = then; // the block would keep the reference only
    __block id observer = nil;
    observer = [NSNotificationCenter.defaultCenter
        addObserverForName:NSApplicationDidFinishLaunchingNotification
                    object:nil
                     queue:nil
                usingBlock:^(NSNotification*) {
                    [NSNotificationCenter.defaultCenter removeObserver:observer];
                    observer = nil;
                    work();
                }];
}

} // namespace kestrel
