// socketLibrary.h: the system's socket library, started for the length of a scope where it must be.
#pragma once

#include "platform/os/socketNames.h"

namespace zk::test {

class SocketLibrary {
public:
#ifdef _WIN32
    SocketLibrary()
    {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
    }
    ~SocketLibrary()
    {
        WSACleanup();
    }
#else
    SocketLibrary()
    {
    }
    ~SocketLibrary()
    {
    }
#endif
    SocketLibrary(SocketLibrary const&) = delete;
    SocketLibrary& operator=(SocketLibrary const&) = delete;
};

}  // namespace zk::test
