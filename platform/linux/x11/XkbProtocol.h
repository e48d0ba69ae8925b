#pragma once

// The protocol header names a struct member with a word that C++ keeps for itself.
#define explicit explicit_member
#include <xcb/xkb.h>
#undef explicit
