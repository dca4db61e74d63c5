// socketNames.h: names and addresses of machines: gethostname(), gethostbyname(), inet_ntoa().
//
// On Windows a program calls WSAStartup() before it asks. The results of the
// last two belong to the system and last until the next call.
#pragma once

#ifdef _WIN32
#    include <winsock2.h>
#else
#    include <arpa/inet.h>
#    include <netdb.h>
#    include <unistd.h>
#endif
