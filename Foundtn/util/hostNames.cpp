#include "Foundtn/util/hostNames.h"

#include "platform/os/hostName.h"

CString zkGetLocalHostName()
{
    constexpr std::size_t room = 63;  // of the name with its NUL
    std::string const name = zk::os::hostName();
    return name.size() < room ? CString(name) : CString();
}

CString zkConvertHostnameToIP(CString host)
{
    if (host.IsEmpty())
        host = zkGetLocalHostName();
    return CString(zk::os::ipv4Address(std::string(host.view())));
}
