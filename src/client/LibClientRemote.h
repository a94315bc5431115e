#pragma once

#include <netinet/in.h>

#include "client/LibClient.h"

// A client of a server reached by host name or address.
class LibClientRemote : public LibClient {
public:
    ~LibClientRemote() override;

    // Connects to `host`, a dotted address or a name to resolve, at `port`, and starts
    // the listener.
    bool ConnectToServer(const char* host, int port);

private:
    static bool ResolveHost(const char* host, in_addr_t& address);
};
