#pragma once

// Constants of Quartz event services, in types of the language.

enum CGEventTapLocation : unsigned int {
    kCGHIDEventTap = 0,
    kCGSessionEventTap = 1,
    kCGAnnotatedSessionEventTap = 2,
};

enum CGEventType : unsigned int { kCGEventKeyDown = 10, kCGEventKeyUp = 11 };

enum CGEventField : unsigned int {
    kCGKeyboardEventAutorepeat = 8,
    kCGKeyboardEventKeycode = 9,
    kCGEventSourceStateID = 45,
};

enum CGEventSourceStateID : int {
    kCGEventSourceStatePrivate = -1,
    kCGEventSourceStateCombinedSessionState = 0,
    kCGEventSourceStateHIDSystemState = 1,
};

enum : unsigned long long {
    kCGEventFlagMaskAlphaShift = 0x10000,
    kCGEventFlagMaskShift = 0x20000,
    kCGEventFlagMaskControl = 0x40000,
    kCGEventFlagMaskAlternate = 0x80000,
    kCGEventFlagMaskCommand = 0x100000,
};
