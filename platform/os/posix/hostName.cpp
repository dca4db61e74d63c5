#include "platform/os/hostName.h"

#include "platform/os/posix/systemCalls.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>

namespace zk::os {

SocketLibrary::SocketLibrary() noexcept : started_(true)
{
}

SocketLibrary::~SocketLibrary() = default;

std::string hostName()
{
    char name[256] = "";  // a name that is cut need not have its NUL
    if (systemCalls().gethostname(name, sizeof name - 1) != 0)
        return {};
    return name;
}

std::string officialHostName(std::string const& name)
{
    addrinfo wanted = {};
    wanted.ai_flags = AI_CANONNAME;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &wanted, &found) != 0)
        return {};
    std::string official = found && found->ai_canonname ? found->ai_canonname : "";
    freeaddrinfo(found);
    return official;
}

std::string ipv4Address(std::string const& name)
{
    addrinfo wanted = {};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &wanted, &found) != 0)
        return {};
    char text[INET_ADDRSTRLEN] = "";
    if (found) {
        auto const address = reinterpret_cast<sockaddr_in const*>(found->ai_addr);
        inet_ntop(AF_INET, &address->sin_addr, text, sizeof text);
    }
    freeaddrinfo(found);
    return text;
}

}  // namespace zk::os
