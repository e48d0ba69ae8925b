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

// Every program in the bundle's folder MacOS has the bundle's identifier as its domain.
StoredDefaults openStoredDefaults()
{
    return { std::make_unique<CFPreferencesDefaultsStore>(), recoveryFile(), "the user defaults" };
}

} // namespace kestrel
