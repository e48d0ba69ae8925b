// Reads and writes assignment sets with an independent implementation of keyed archives.
//   archive-peer print FILE        prints the root object of an archive
//   archive-peer copy FILE NEW FORMAT   archives it again, FORMAT = xml or binary
//   archive-peer serve        reads archives from standard input and answers each one with the text
//                             of its root object, or with nothing when it cannot read or name it.
//                             The length of each, four bytes, comes first.

#import <Foundation/Foundation.h>

#include <math.h>

@interface UserAssignFile : NSObject <NSCoding> {
@public
    NSString* myType;
    int64_t myVersion;
    id orgShortcutArray;
    id orgShortcutTitleArray;
}
@end

@implementation UserAssignFile

- (id)initWithCoder:(NSCoder*)coder
{
    myType = [[coder decodeObjectForKey:@"myType"] retain];
    myVersion = [coder decodeInt64ForKey:@"myVersion"];
    orgShortcutArray = [[coder decodeObjectForKey:@"orgShortcutArray"] retain];
    orgShortcutTitleArray = [[coder decodeObjectForKey:@"orgShortcutTitleArray"] retain];
    return self;
}

- (void)encodeWithCoder:(NSCoder*)coder
{
    [coder encodeObject:myType forKey:@"myType"];
    [coder encodeInt64:myVersion forKey:@"myVersion"];
    [coder encodeObject:orgShortcutArray forKey:@"orgShortcutArray"];
    [coder encodeObject:orgShortcutTitleArray forKey:@"orgShortcutTitleArray"];
}

@end

static NSString* numberText(NSNumber* number)
{
    if (number == [NSNumber numberWithBool:YES])
        return @"true";
    if (number == [NSNumber numberWithBool:NO])
        return @"false";
    const char type = [number objCType][0];
    if (type == 'd' || type == 'f')
        return [NSString stringWithFormat:@"r%a", [number doubleValue]];
    if ([number longLongValue] < 0 && [number compare:[NSNumber numberWithInt:0]] > 0)
        return [NSString stringWithFormat:@"u%llu", [number unsignedLongLongValue]];
    return [NSString stringWithFormat:@"i%lld", [number longLongValue]];
}

static BOOL isServing = NO;

static NSComparisonResult byCodeUnits(id first, id second, void* context)
{
    return [first compare:second options:NSLiteralSearch];
}

// Dictionaries in order of their keys, which are numbers; when serving, in order of the texts of
// their entries.
static NSString* textOf(id value)
{
    NSMutableString* text = [NSMutableString string];
    if (value == nil || [value isKindOfClass:[NSNull class]])
        return @"nil";
    if ([value isKindOfClass:[NSString class]])
        return [NSString stringWithFormat:@"'%@'", value];
    if ([value isKindOfClass:[NSNumber class]])
        return numberText(value);
    if ([value isKindOfClass:[NSArray class]]) {
        for (NSUInteger i = 0; i < [value count]; ++i)
            [text appendFormat:@"%@,", textOf([value objectAtIndex:i])];
        return [NSString stringWithFormat:@"[%@]", text];
    }
    if ([value isKindOfClass:[NSDictionary class]]) {
        if (isServing) {
            NSMutableArray* entries = [NSMutableArray array];
            NSEnumerator* enumerator = [value keyEnumerator];
            id key;
            while ((key = [enumerator nextObject]))
                [entries addObject:[NSString stringWithFormat:@"%@:%@,", textOf(key),
                                             textOf([value objectForKey:key])]];
            [entries sortUsingFunction:byCodeUnits context:NULL];
            return [NSString stringWithFormat:@"{%@}", [entries componentsJoinedByString:@""]];
        }
        NSArray* keys = [[value allKeys] sortedArrayUsingSelector:@selector(compare:)];
        for (NSUInteger i = 0; i < [keys count]; ++i) {
            id key = [keys objectAtIndex:i];
            [text appendFormat:@"%@:%@,", textOf(key), textOf([value objectForKey:key])];
        }
        return [NSString stringWithFormat:@"{%@}", text];
    }
    if ([value isKindOfClass:[UserAssignFile class]]) {
        UserAssignFile* set = value;
        return [NSString stringWithFormat:@"UserAssignFile:NSObject<&myType %@;=myVersion i%lld;"
                                          @"&orgShortcutArray %@;&orgShortcutTitleArray %@;>",
                         textOf(set->myType), (long long)set->myVersion,
                         textOf(set->orgShortcutArray), textOf(set->orgShortcutTitleArray)];
    }
    if (isServing)
        [NSException raise:NSGenericException format:@"no text for %@", [value class]];
    return [NSString stringWithFormat:@"?%@", [value class]];
}

static BOOL copyArchive(id root, NSString* path, BOOL isXml)
{
    NSMutableData* data = [NSMutableData data];
    NSKeyedArchiver* archiver = [[NSKeyedArchiver alloc] initForWritingWithMutableData:data];
    [archiver setOutputFormat:isXml ? NSPropertyListXMLFormat_v1_0
                                    : NSPropertyListBinaryFormat_v1_0];
    [archiver encodeObject:root forKey:@"root"];
    [archiver finishEncoding];
    return [data writeToFile:path atomically:NO];
}

static NSData* answerTo(NSData* archive)
{
    NSData* answer = [NSData data];
    @try {
        NSString* text = textOf([NSKeyedUnarchiver unarchiveObjectWithData:archive]);
        answer = [text dataUsingEncoding:NSUTF8StringEncoding];
    } @catch (NSException* exception) {
    }
    return answer;
}

static int serve(void)
{
    isServing = YES;
    uint32_t length;
    while (fread(&length, sizeof length, 1, stdin) == 1) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        NSMutableData* archive = [NSMutableData dataWithLength:length];
        if (length > 0 && fread([archive mutableBytes], length, 1, stdin) != 1)
            return 1;
        NSData* answer = answerTo(archive);
        length = (uint32_t)[answer length];
        fwrite(&length, sizeof length, 1, stdout);
        fwrite([answer bytes], 1, length, stdout);
        fflush(stdout);
        [pool release];
    }
    return 0;
}

int main(void)
{
    [[NSAutoreleasePool alloc] init];
    NSArray* arguments = [[NSProcessInfo processInfo] arguments];
    if ([arguments count] == 2 && [[arguments objectAtIndex:1] isEqualToString:@"serve"])
        return serve();
    if ([arguments count] < 3)
        return 2;
    id root = [NSKeyedUnarchiver unarchiveObjectWithFile:[arguments objectAtIndex:2]];
    if ([[arguments objectAtIndex:1] isEqualToString:@"print"]) {
        puts([textOf(root) UTF8String]);
        return 0;
    }
    if ([arguments count] < 5)
        return 2;
    const BOOL isXml = [[arguments objectAtIndex:4] isEqualToString:@"xml"];
    return copyArchive(root, [arguments objectAtIndex:3], isXml) ? 0 : 1;
}
