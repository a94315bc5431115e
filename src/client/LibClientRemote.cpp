#include "client/LibClientRemote.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>

#include "logging/Log.h"

LibClientRemote::~LibClientRemote() { EndConnection(); }

bool LibClientRemote::ConnectToServer(const char* host, int port) {
    in_addr_t address = INADDR_NONE;
    if (!ResolveHost(host, address)) return false;
    return ConnectSocket(address, port);
}

bool LibClientRemote::ResolveHost(const char* host, in_addr_t& address) {
    if (host == nullptr) host = "";
    address = inet_addr(host);
    if (address != INADDR_NONE) return true;

    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (host[0] == '\0' || getaddrinfo(host, nullptr, &hints, &found) != 0 || found == nullptr) {
        Log::log(1) << "Failed to resolve hostname <" << host << ">\n";
        return false;
    }
    in_addr resolved = reinterpret_cast<sockaddr_in*>(found->ai_addr)->sin_addr;
    freeaddrinfo(found);
    address = resolved.s_addr;
    char text[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, &resolved, text, sizeof(text));
    Log::log(3) << host << " resolved to " << text << "\n";
    return true;
}
