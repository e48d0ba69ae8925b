#include "platform/macos/AccessibilityPermissions.h"

#include "platform/macos/CFHolder.h"

#include <ApplicationServices/ApplicationServices.h>
#include <CoreServices/CoreServices.h>

namespace kestrel {

AccessibilityPermissions::AccessibilityPermissions(std::shared_ptr<PostEventAccess> access)
    : m_access(std::move(access))
{
}

bool AccessibilityPermissions::mayPostKeyEvents()
{
    return m_access->ask();
}

void AccessibilityPermissions::requestKeyEvents()
{
    const void* keys[] = { kAXTrustedCheckOptionPrompt };
    const void* values[] = { kCFBooleanTrue };
    const CFHolder options(CFDictionaryCreate(kCFAllocatorDefault, keys, values, 1,
        &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    // Returns before the user has answered. The call also adds the program to the system's list.
    AXIsProcessTrustedWithOptions(options.get());
}

void AccessibilityPermissions::showKeyEventSettings()
{
    const CFHolder list(CFURLCreateWithString(kCFAllocatorDefault,
        CFSTR("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"),
        nullptr));
    if (list)
        LSOpenCFURLRef(list.get(), nullptr);
}

} // namespace kestrel
