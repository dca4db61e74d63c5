#include "platform/os/hostName.h"

#include <winsock2.h>

#include <cstring>

namespace zk::os {

SocketLibrary::SocketLibrary() noexcept
{
    WSADATA data;
    started_ = WSAStartup(MAKEWORD(1, 1), &data) == 0;
}

SocketLibrary::~SocketLibrary()
{
    if (started_)
        WSACleanup();
}

std::string hostName()
{
    char name[256] = "";
    if (gethostname(name, sizeof name - 1) != 0)
        return {};
    return name;
}

std::string officialHostName(std::string const& name)
{
    hostent const* const found = gethostbyname(name.c_str());
    return found && found->h_name ? found->h_name : "";
}

std::string ipv4Address(std::string const& name)
{
    hostent const* const host = gethostbyname(name.c_str());
    if (!host || host->h_addrtype != AF_INET || !host->h_addr_list[0])
        return {};
    in_addr address = {};
    std::memcpy(&address, host->h_addr_list[0], sizeof address);
    return inet_ntoa(address);
}

}  // namespace zk::os
