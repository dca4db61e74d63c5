// system.h: the system's own headers, with the settings this library needs.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#    define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#    define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#    define _WIN32_WINNT 0x0A00
#endif
#include <windows.h>

#include <richedit.h>

#include <ctime>
#include <mbctype.h>
#include <mbstring.h>
#include <stdlib.h>
#include <string.h>

// Those headers define names that the standard library uses for its own.
#undef _M1
#undef _M2
