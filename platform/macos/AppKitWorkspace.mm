#include "platform/macos/AppKitWorkspace.h"

#include "platform/macos/FoundationText.h"

#import <AppKit/AppKit.h>

namespace kestrel {

void AppKitWorkspace::visitRunningApplications(const Visitor& visit)
{
    @autoreleasepool {
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            const char* name = application.localizedName.UTF8String; // until the pool is drained
            if (!visit({ .localizedName = name ? name : "", .active = bool(application.active) }))
                return;
        }
    }
}

bool AppKitWorkspace::openFile(std::string_view path)
{
    @autoreleasepool {
        NSString* file = FoundationText::fromUtf8(path);
        if (file.length == 0) // a file URL cannot be made of nothing
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

} // namespace kestrel
