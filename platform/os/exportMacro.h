// exportMacro.h: the one macro that marks what the module exports.
#pragma once

#if defined(ZK_UTIL_STATIC)
#    define ZK_UTIL_API
#elif defined(_WIN32)
#    if defined(ZK_UTIL_BUILD)
#        define ZK_UTIL_API __declspec(dllexport)
#    else
#        define ZK_UTIL_API __declspec(dllimport)
#    endif
#else
#    define ZK_UTIL_API __attribute__((visibility("default")))
#endif
