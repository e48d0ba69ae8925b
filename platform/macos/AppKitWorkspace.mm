#include "platform/macos/AppKitWorkspace.h"

#include "platform/macos/ActiveApplications.h"
#include "platform/macos/FoundationText.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace kestrel {

AppKitWorkspace::AppKitWorkspace()
    : m_reopening(kAEReopenApplication)
    , m_quitting(kAEQuitApplication)
{
}

// A name is valid until the pool drains.
void AppKitWorkspace::visitActiveApplications(const Visitor& visit)
{
    @autoreleasepool {
        NSArray<NSRunningApplication*>* const applications
            = NSWorkspace.sharedWorkspace.runningApplications;
        visitActive(
            applications, visit, [](NSRunningApplication* each) { return each.active; },
            [](NSRunningApplication* each) { return each.localizedName.UTF8String; });
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
    m_reopening.setAct(std::move(reopened));
}

// AppKit's own handler refuses while a modal window or a sheet is open. Otherwise it asks Qt, which
// refuses too and ends the event loop, and the system reports an interrupted log-out. This one
// reports no error, and the process ends.
void AppKitWorkspace::setQuitRequested(std::function<void()> quitRequested)
{
    m_quitting.setAct(std::move(quitRequested));
}

} // namespace kestrel
