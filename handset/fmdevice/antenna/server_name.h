// The addresses behind a host's name, which may take its time to be found. Host code.
#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

#include <functional>
#include <string>
#include <vector>

namespace fm {

struct ServerAddress {
    sockaddr_storage address{};
    int length = 0;
};

// Empty when there is none, or `stop` said to give it up. A name server that does not answer holds nobody up:
// the question is left to a thread of its own.
std::vector<ServerAddress> AddressesOf(const std::string& host, std::uint16_t port,
                                       const std::function<bool()>& stop);

}  // namespace fm
