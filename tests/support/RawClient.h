#pragma once

#include <netinet/in.h>

#include <cstdint>
#include <optional>
#include <string>

#include "server/ClientServerMessage.h"

// The loopback address with the given port.
sockaddr_in Loopback(int port);

// A test's own end of a connection to the server: raw bytes and framed messages.
class RawClient {
public:
    RawClient() = default;
    ~RawClient() { Close(); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    bool Connect(int port);
    void Close();
    bool SendBytes(const void* data, size_t size);
    bool SendLength(int32_t length) { return SendBytes(&length, sizeof(length)); }
    bool SendFrame(const std::string& text);
    bool SendMessage(const ClientServerMessage& msg);
    bool Send(eMsgType type, eMsg code);
    // The next whole frame's text, or nothing if none arrives within `seconds`.
    std::optional<std::string> ReadFrame(double seconds);
    // Parses the next frame into `msg`; false if none arrives in time or it does not parse.
    bool ReadMessage(ClientServerMessage& msg, double seconds);
    // True if the server closes the connection within `seconds` (discarding what it sends).
    bool ClosedByPeer(double seconds);

    int socket = -1;

private:
    bool readExactly(char* buffer, size_t size, double seconds);
};
