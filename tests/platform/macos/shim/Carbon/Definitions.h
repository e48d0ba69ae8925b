#pragma once

// Constants of the keyboard layouts, in types of the language.

enum { shiftKey = 0x200 };
enum { kUCKeyActionDown = 0 };
enum { kUCKeyTranslateNoDeadKeysMask = 1 };
