#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/RawClient.h"

// The server's side of the client tests: a socket listening on a free loopback port whose
// connections the test takes one at a time and drives by hand.
class FakeServer {
public:
    FakeServer() {
        sockaddr_in address = Loopback(0);
        socklen_t size = sizeof(address);
        bind(listener, reinterpret_cast<sockaddr*>(&address), size);
        listen(listener, 4);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
    }
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;
    ~FakeServer() { close(listener); }

    // Makes `peer` the server's end of the next connection, waiting up to five seconds.
    bool Accept(RawClient& peer) {
        pollfd waiting{listener, POLLIN, 0};
        if (poll(&waiting, 1, 5000) <= 0) return false;
        peer.Close();
        peer.socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        return peer.socket != -1;
    }

    int port = 0;

private:
    int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
};
