#pragma once

#include <CoreFoundation/Definitions.h>
#include <CoreFoundation/Names.h>

// What macOS gives as inline functions and compiler built-ins.
extern "C" CFStringRef kestrelConstantString(const char* text);
#define CFSTR(text) kestrelConstantString("" text)

inline CFRange CFRangeMake(CFIndex location, CFIndex length)
{
    return { location, length };
}
