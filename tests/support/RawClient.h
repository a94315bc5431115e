#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "server/ClientServerMessage.h"

// A test's own end of a connection to the server: raw bytes and framed messages.
class RawClient {
public:
    RawClient() = default;
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    bool Connect(int port);
    void Close();
    bool SendBytes(const void* data, size_t size);
    bool SendLength(int32_t length);
    bool SendFrame(const std::string& text);
    bool SendMessage(ClientServerMessage& msg);
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
