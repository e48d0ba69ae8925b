#pragma once

// xcb/xkb.h has a struct member named `explicit`, which is a keyword in C++.
#define explicit explicit_member
#include <xcb/xkb.h>
#undef explicit
