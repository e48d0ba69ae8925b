#pragma once

// Names of types, functions and constant objects of the input sources and their keyboard layouts.

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef UInt32 OptionBits;
typedef UInt16 UniChar;
typedef unsigned long UniCharCount;
typedef struct UCKeyboardLayout UCKeyboardLayout;
typedef struct __TISInputSource* TISInputSourceRef;

extern const CFStringRef kTISPropertyUnicodeKeyLayoutData;

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void);
TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource(void);
void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef property);

UInt8 LMGetKbdType(void);
OSStatus UCKeyTranslate(const UCKeyboardLayout* layout, UInt16 key, UInt16 action, UInt32 modifiers,
    UInt32 keyboardType, OptionBits options, UInt32* deadKeyState, UniCharCount room,
    UniCharCount* length, UniChar text[]);

} // extern "C"
