#pragma once

// Functions and constant objects that tell about the permission to control the computer.

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

extern CFStringRef kAXTrustedCheckOptionPrompt;

Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);

} // extern "C"
