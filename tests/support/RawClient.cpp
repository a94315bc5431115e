#include "support/RawClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <vector>

RawClient::~RawClient() { Close(); }

bool RawClient::Connect(int port) {
    Close();
    socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
        Close();
        return false;
    }
    // A frame goes out as a length and a text: do not hold the text back for an ack.
    int noDelay = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof(noDelay));
    return true;
}

void RawClient::Close() {
    if (socket != -1) close(socket);
    socket = -1;
}

bool RawClient::SendBytes(const void* data, size_t size) {
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        ssize_t sent = send(socket, bytes, size, MSG_NOSIGNAL);
        if (sent <= 0) return false;
        bytes += sent;
        size -= static_cast<size_t>(sent);
    }
    return true;
}

bool RawClient::SendLength(int32_t length) { return SendBytes(&length, sizeof(length)); }

bool RawClient::SendFrame(const std::string& text) {
    return SendLength(static_cast<int32_t>(text.size())) && SendBytes(text.data(), text.size());
}

bool RawClient::SendMessage(ClientServerMessage& msg) {
    std::string text;
    msg.ToString(text);
    return SendFrame(text);
}

bool RawClient::Send(eMsgType type, eMsg code) {
    ClientServerMessage msg;
    msg.SetType(type);
    msg.SetMsg(code);
    return SendMessage(msg);
}

bool RawClient::readExactly(char* buffer, size_t size, double seconds) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (size > 0) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        pollfd entry{socket, POLLIN, 0};
        if (poll(&entry, 1, static_cast<int>(left.count())) <= 0) return false;
        ssize_t got = recv(socket, buffer, size, 0);
        if (got <= 0) return false;
        buffer += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

std::optional<std::string> RawClient::ReadFrame(double seconds) {
    int32_t length = 0;
    if (!readExactly(reinterpret_cast<char*>(&length), sizeof(length), seconds)) return {};
    if (length < 0) return {};
    std::string text(static_cast<size_t>(length), '\0');
    if (!readExactly(text.data(), text.size(), seconds)) return {};
    return text;
}

bool RawClient::ReadMessage(ClientServerMessage& msg, double seconds) {
    std::optional<std::string> text = ReadFrame(seconds);
    return text && msg.FromString(text->c_str());
}

bool RawClient::ClosedByPeer(double seconds) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    std::vector<char> sink(65536);
    while (std::chrono::steady_clock::now() < deadline) {
        pollfd entry{socket, POLLIN, 0};
        if (poll(&entry, 1, 50) <= 0) continue;
        ssize_t got = recv(socket, sink.data(), sink.size(), 0);
        if (got <= 0) return true;
    }
    return false;
}
