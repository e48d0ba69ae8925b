#pragma once

// Functions of Launch Services.

extern "C" {

OSStatus LSOpenCFURLRef(CFURLRef url, CFURLRef* launched);

} // extern "C"
