#pragma once

// libxcb (1.15) calls a member "explicit", which C++ forbids: freedesktop.org's bug 74080. Include
// the header itself, and drop this one, when it compiles without the definition.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
