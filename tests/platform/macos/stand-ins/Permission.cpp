#include "tests/platform/macos/stand-ins/Permission.h"

#include "tests/platform/macos/stand-ins/CFString.h"

#include <ApplicationServices/ApplicationServices.h>
#include <CoreServices/CoreServices.h>

namespace kestrel::test {

Permission& permission()
{
    static Permission permission;
    return permission;
}

} // namespace kestrel::test

using kestrel::test::CFString;
using kestrel::test::permission;

CFStringRef kAXTrustedCheckOptionPrompt = CFSTR("AXTrustedCheckOptionPrompt");

Boolean AXIsProcessTrusted()
{
    ++permission().askings;
    return permission().accessibility;
}

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options)
{
    if (options && CFDictionaryGetValue(options, kAXTrustedCheckOptionPrompt) == kCFBooleanTrue)
        ++permission().prompts;
    return permission().accessibility;
}

bool CGPreflightPostEventAccess()
{
    return permission().postEvents;
}

OSStatus LSOpenCFURLRef(CFURLRef url, CFURLRef*)
{
    permission().opened.push_back(CFString::textOf(CFURLGetString(url)));
    return noErr;
}
