#include "platform/os/socketNames.h"

#include "Foundtn/util/hostNames.h"

#include <cstring>

CString zkGetLocalHostName()
{
    char name[63];
    if (gethostname(name, sizeof name) != 0)
        return CString();
    name[sizeof name - 1] = '\0';
    return name;
}

CString zkConvertHostnameToIP(CString host)
{
    if (host.IsEmpty())
        host = zkGetLocalHostName();
    hostent const* const entry = gethostbyname(host);
    in_addr address{};
    if (!entry || entry->h_addrtype != AF_INET || entry->h_length != static_cast<int>(sizeof address) ||
        !entry->h_addr_list[0])
        return CString();
    std::memcpy(&address, entry->h_addr_list[0], sizeof address);
    return inet_ntoa(address);
}
