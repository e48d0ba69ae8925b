#include "platform/macos/AppServiceLoginItem.h"

#import <Foundation/Foundation.h>

// The part of SMAppService that is used here. The class is looked up by name, so that the program
// starts on macOS 12, which lacks it, and builds with the SDK of macOS 12.
@protocol KestrelAppService <NSObject>
@property (readonly) NSInteger status;
- (BOOL)registerAndReturnError:(NSError**)error;
- (BOOL)unregisterAndReturnError:(NSError**)error;
@end

@protocol KestrelAppServiceClass <NSObject>
+ (id<KestrelAppService>)mainAppService;
+ (void)openSystemSettingsLoginItems;
@end

namespace kestrel {

namespace {
// Values of SMAppServiceStatus.
constexpr NSInteger Enabled = 1;
constexpr NSInteger RequiresApproval = 2; // registered, and switched off by the user

Class<KestrelAppServiceClass> serviceClass()
{
    static const Class found = [] {
        // The program does not link ServiceManagement, so it is loaded here.
        [[NSBundle bundleWithPath:@"/System/Library/Frameworks/ServiceManagement.framework"] load];
        return NSClassFromString(@"SMAppService");
    }();
    return static_cast<Class<KestrelAppServiceClass>>(found);
}
} // namespace

bool AppServiceLoginItem::isAvailable()
{
    @autoreleasepool {
        // A program outside a bundle, such as a test program, cannot be registered.
        return serviceClass() != nil && NSBundle.mainBundle.bundleIdentifier != nil;
    }
}

bool AppServiceLoginItem::isEnabled()
{
    @autoreleasepool {
        return [serviceClass() mainAppService].status == Enabled;
    }
}

LoginItem::Result AppServiceLoginItem::setEnabled(bool enabled)
{
    @autoreleasepool {
        id<KestrelAppService> service = [serviceClass() mainAppService];
        if (!service)
            return Result::Failed;
        // SMAppService reports an error when the requested state holds already.
        const NSInteger status = service.status;
        if (!enabled) {
            const bool isRegistered = status == Enabled || status == RequiresApproval;
            return !isRegistered || [service unregisterAndReturnError:nil] ? Result::Done
                                                                           : Result::Failed;
        }
        if (status == Enabled || [service registerAndReturnError:nil])
            return service.status == RequiresApproval ? Result::NeedsApproval : Result::Done;
        return service.status == RequiresApproval ? Result::NeedsApproval : Result::Failed;
    }
}

void AppServiceLoginItem::showSettings()
{
    @autoreleasepool {
        [serviceClass() openSystemSettingsLoginItems];
    }
}

} // namespace kestrel
