#pragma once

// Structures, constants and macros of Core Foundation, in types of the language.

struct CFRange {
    long location;
    long length;
};

struct CFDictionaryKeyCallBacks {
    long version;
    const void* (*retain)(const struct __CFAllocator* allocator, const void* value);
    void (*release)(const struct __CFAllocator* allocator, const void* value);
    const struct __CFString* (*copyDescription)(const void* value);
    unsigned char (*equal)(const void* value1, const void* value2);
    unsigned long (*hash)(const void* value);
};

struct CFDictionaryValueCallBacks {
    long version;
    const void* (*retain)(const struct __CFAllocator* allocator, const void* value);
    void (*release)(const struct __CFAllocator* allocator, const void* value);
    const struct __CFString* (*copyDescription)(const void* value);
    unsigned char (*equal)(const void* value1, const void* value2);
};

enum : int { noErr = 0 };
enum : unsigned int { kCFStringEncodingUTF8 = 0x08000100 };
