#include "platform/macos/FoundationDocumentFiles.h"

#include "platform/macos/FoundationText.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace kestrel {

namespace {
std::string problemOf(NSError* error)
{
    const char* text = error.localizedDescription.UTF8String;
    return text ? text : "The file cannot be written";
}

// Some errors show only when the data goes to the disk. A file system without fsync() is no error.
std::string problemOnDisk(NSURL* file)
{
    const int descriptor = ::open(file.fileSystemRepresentation, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return std::strerror(errno);
    const bool isOnDisk = ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
    std::string problem = isOnDisk ? "" : std::strerror(errno);
    ::close(descriptor);
    return problem;
}

std::string putInPlace(NSURL* fresh, NSURL* target)
{
    NSFileManager* const manager = NSFileManager.defaultManager;
    NSError* error = nil;
    BOOL isFolder = NO;
    if (![manager fileExistsAtPath:target.path isDirectory:&isFolder])
        return [manager moveItemAtURL:fresh toURL:target error:&error] ? "" : problemOf(error);
    // The system would replace a folder with all that is in it, and a file that is marked as
    // read-only.
    if (isFolder)
        return std::strerror(EISDIR);
    if (![manager isWritableFileAtPath:target.path])
        return std::strerror(EACCES);
    return [manager replaceItemAtURL:target
                       withItemAtURL:fresh
                      backupItemName:nil
                             options:0
                    resultingItemURL:nil
                               error:&error]
        ? ""
        : problemOf(error);
}

std::string writeAndPutInPlace(NSData* content, NSURL* folder, NSURL* target)
{
    NSURL* const fresh = [folder URLByAppendingPathComponent:target.lastPathComponent];
    NSError* error = nil;
    if (![content writeToURL:fresh options:0 error:&error])
        return problemOf(error);
    std::string problem = problemOnDisk(fresh);
    return problem.empty() ? putInPlace(fresh, target) : problem;
}
} // namespace

std::string FoundationDocumentFiles::replace(
    std::string_view path, std::span<const std::uint8_t> content)
{
    @autoreleasepool {
        NSString* const file = FoundationText::fromUtf8(path);
        if (file.length == 0) // fileURLWithPath: raises an exception for an empty path
            return std::strerror(ENOENT);
        NSURL* const target = [NSURL fileURLWithPath:file].URLByResolvingSymlinksInPath;
        NSFileManager* const manager = NSFileManager.defaultManager;
        NSError* error = nil;
        NSURL* const folder = [manager URLForDirectory:NSItemReplacementDirectory
                                              inDomain:NSUserDomainMask
                                     appropriateForURL:target
                                                create:YES
                                                 error:&error];
        if (!folder)
            return problemOf(error);
        NSData* const data = [NSData dataWithBytes:content.data() length:content.size()];
        std::string problem = writeAndPutInPlace(data, folder, target);
        [manager removeItemAtURL:folder error:nil];
        return problem;
    }
}

bool FoundationDocumentFiles::setCodes(std::string_view path, FileCodes codes)
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

std::optional<FileCodes> FoundationDocumentFiles::codes(std::string_view path)
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
