// hostNames.h: this machine's name, and the address of a machine.
//
// On Windows the caller has started the socket library (WSAStartup) before.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

/// The machine's name; empty if the system doesn't tell, or the name takes more than 62 bytes.
ZK_UTIL_API CString zkGetLocalHostName();

/// The first IPv4 address of `host` with dots, of this machine for an empty name; empty if there is none. Waits
/// for the name service where it must.
ZK_UTIL_API CString zkConvertHostnameToIP(CString host);
