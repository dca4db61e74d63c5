// types.h: the system's types with their widths on Windows.
//
// DWORD is 32 bits here too, although `unsigned long` is not: what a public
// signature spells `unsigned long` stays so, what it spells DWORD is this one.
#pragma once

#include <cstddef>
#include <cstdint>

using BOOL = int;
using BYTE = unsigned char;
using UCHAR = unsigned char;
using WORD = std::uint16_t;
using USHORT = std::uint16_t;
using SHORT = std::int16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using LONG64 = std::int64_t;
using DWORD64 = std::uint64_t;
using LONG_PTR = std::intptr_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using CHAR = char;
using WCHAR = wchar_t;
using VOID = void;
using PVOID = void*;
using LPVOID = void*;
using LPCVOID = void const*;
using LPSTR = char*;
using LPCSTR = char const*;
using LPBOOL = BOOL*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using PDWORD = DWORD*;
using LPLONG = LONG*;
using PLONG = LONG*;
using ATOM = WORD;
using LCID = DWORD;
using LANGID = WORD;
using COLORREF = DWORD;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

using HANDLE = void*;
using LPHANDLE = HANDLE*;
using PHANDLE = HANDLE*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;
struct HWND__;
using HWND = HWND__*;
struct HKEY__;
using HKEY = HKEY__*;

// The calling conventions of the other target mean nothing here.
#define WINAPI
#define CALLBACK
#define APIENTRY

#ifndef TRUE
#    define TRUE 1
#endif
#ifndef FALSE
#    define FALSE 0
#endif

#define MAX_PATH 260
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))
#define INFINITE 0xFFFFFFFFu

#define MAKEWORD(low, high)                                                                                  \
    (static_cast<WORD>((static_cast<DWORD_PTR>(low) & 0xff) | ((static_cast<DWORD_PTR>(high) & 0xff) << 8)))
#define MAKELONG(low, high)                                                                                  \
    (static_cast<LONG>((static_cast<DWORD_PTR>(low) & 0xffff) |                                              \
                       ((static_cast<DWORD_PTR>(high) & 0xffff) << 16)))
#define LOWORD(value) (static_cast<WORD>(static_cast<DWORD_PTR>(value) & 0xffff))
#define HIWORD(value) (static_cast<WORD>((static_cast<DWORD_PTR>(value) >> 16) & 0xffff))
#define LOBYTE(value) (static_cast<BYTE>(static_cast<DWORD_PTR>(value) & 0xff))
#define HIBYTE(value) (static_cast<BYTE>((static_cast<DWORD_PTR>(value) >> 8) & 0xff))

struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using LPFILETIME = FILETIME*;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;      // 1 is January
    WORD wDayOfWeek;  // 0 is Sunday
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

/// A range of characters in a text with formats: from `cpMin` up to, not with, `cpMax`.
struct _charrange {
    LONG cpMin;
    LONG cpMax;
};
using CHARRANGE = _charrange;

struct POINT {
    LONG x;
    LONG y;
};
using LPPOINT = POINT*;

struct SIZE {
    LONG cx;
    LONG cy;
};
using LPSIZE = SIZE*;

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using LPCRECT = RECT const*;

union LARGE_INTEGER {
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;

union ULARGE_INTEGER {
    struct {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
};
using PULARGE_INTEGER = ULARGE_INTEGER*;
