// hostName.h: the name of this machine in the network.
//
//   if (zk::os::SocketLibrary const sockets; sockets.started()) {
//       std::string const name = zk::os::hostName();              // "build7"
//       std::string const full = zk::os::officialHostName(name);  // "build7.example.org", or "build7"
//   }
#pragma once

#include "platform/os/exportMacro.h"

#include <string>

namespace zk::os {

/// Keeps the system's socket library (version 1.1) started, where it has to be started at all.
class ZK_UTIL_API SocketLibrary {
public:
    SocketLibrary() noexcept;
    ~SocketLibrary();
    SocketLibrary(SocketLibrary const&) = delete;
    SocketLibrary& operator=(SocketLibrary const&) = delete;

    bool started() const noexcept { return started_; }

private:
    bool started_;
};

/// The machine's name as it was set; empty if the system does not tell. Needs the socket library.
ZK_UTIL_API std::string hostName();

/// The official name that the name services have for a machine; empty if they don't know it.
///
/// Needs the socket library. May ask other machines, and so take seconds.
ZK_UTIL_API std::string officialHostName(std::string const& name);

/// The first IPv4 address of a machine, with dots; empty if it has none. The same needs and the same time.
ZK_UTIL_API std::string ipv4Address(std::string const& name);

}  // namespace zk::os
