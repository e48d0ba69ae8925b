#include "platform/StoredDefaults.h"

#include "platform/macos/CFPreferencesDefaultsStore.h"

#import <Foundation/Foundation.h>

namespace kestrel {

namespace {
// Empty if the user has no folder for the files of applications.
std::string recoveryFile()
{
    NSString* const folder
        = NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, YES)
              .firstObject;
    NSString* const path = [folder stringByAppendingPathComponent:@"kestrel/recovery.ZKCF"];
    return path ? path.UTF8String : "";
}
} // namespace

// A program outside of the bundle has no identifier of its own.
StoredDefaults openStoredDefaults()
{
    CFStringRef domain = kCFPreferencesCurrentApplication;
    if (!NSBundle.mainBundle.bundleIdentifier)
        domain = CFSTR("com.holvik.kestrel");
    return { std::make_unique<CFPreferencesDefaultsStore>(domain), recoveryFile(),
        "the user defaults" };
}

} // namespace kestrel
