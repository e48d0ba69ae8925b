#include "platform/SessionFolder.h"

#import <Foundation/Foundation.h>

namespace kestrel {

// Not the user's temporary folder: the system removes old files from it while the program runs.
std::string sessionFolder()
{
    @autoreleasepool {
        NSString* const folder = NSSearchPathForDirectoriesInDomains(
            NSApplicationSupportDirectory, NSUserDomainMask, YES)
                                     .firstObject;
        return folder ? folder.fileSystemRepresentation : "";
    }
}

} // namespace kestrel
