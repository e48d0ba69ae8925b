#include "platform/macos/FinderFileAttributes.h"

#include "platform/macos/FoundationText.h"

namespace kestrel {

bool FinderFileAttributes::setCodes(std::string_view path, FileCodes codes)
{
    @autoreleasepool {
        NSString* file = FoundationText::fromUtf8(path);
        if (!file)
            return false;
        return [NSFileManager.defaultManager setAttributes:@{
            NSFileHFSTypeCode : @(codes.type),
            NSFileHFSCreatorCode : @(codes.creator)
        }
                                              ofItemAtPath:file
                                                     error:nil];
    }
}

std::optional<FileCodes> FinderFileAttributes::codes(std::string_view path)
{
    @autoreleasepool {
        NSString* file = FoundationText::fromUtf8(path);
        if (!file)
            return std::nullopt;
        NSDictionary<NSFileAttributeKey, id>* attributes =
            [NSFileManager.defaultManager attributesOfItemAtPath:file error:nil];
        const FileCodes codes {
            .type = attributes.fileHFSTypeCode,
            .creator = attributes.fileHFSCreatorCode,
        };
        // A file without codes reads as zeros, and setting zeros removes the codes.
        return codes == FileCodes {} ? std::nullopt : std::optional(codes);
    }
}

} // namespace kestrel
