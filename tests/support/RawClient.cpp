#include "support/RawClient.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Waits up to `seconds` for something to read on `socket`.
bool Readable(int socket, double seconds) {
    pollfd entry{socket, POLLIN, 0};
    return poll(&entry, 1, static_cast<int>(seconds * 1000)) > 0;
}

}  // namespace

sockaddr_in Loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

bool RawClient::Connect(int port) {
    Close();
    socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = Loopback(port);
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
    for (ssize_t sent = 0; size > 0; bytes += sent, size -= static_cast<size_t>(sent)) {
        sent = send(socket, bytes, size, MSG_NOSIGNAL);
        if (sent <= 0) return false;
    }
    return true;
}

bool RawClient::SendFrame(const std::string& text) {
    return SendLength(static_cast<int32_t>(text.size())) && SendBytes(text.data(), text.size());
}

bool RawClient::SendMessage(const ClientServerMessage& msg) {
    std::string text;
    return msg.ToString(text) && SendFrame(text);
}

bool RawClient::Send(eMsgType type, eMsg code) {
    ClientServerMessage msg;
    msg.SetType(type);
    msg.SetMsg(code);
    return SendMessage(msg);
}

bool RawClient::readExactly(char* buffer, size_t size, double seconds) {
    for (ssize_t got = 0; size > 0; buffer += got, size -= static_cast<size_t>(got)) {
        if (!Readable(socket, seconds)) return false;
        got = recv(socket, buffer, size, 0);
        if (got <= 0) return false;
    }
    return true;
}

std::optional<std::string> RawClient::ReadFrame(double seconds) {
    int32_t length = 0;
    if (!readExactly(reinterpret_cast<char*>(&length), sizeof(length), seconds) || length < 0) {
        return {};
    }
    std::string text(static_cast<size_t>(length), '\0');
    if (!readExactly(text.data(), text.size(), seconds)) return {};
    return text;
}

bool RawClient::ReadMessage(ClientServerMessage& msg, double seconds) {
    std::optional<std::string> text = ReadFrame(seconds);
    return text && msg.FromString(text->c_str());
}

bool RawClient::ClosedByPeer(double seconds) {
    char sink[65536];
    while (Readable(socket, seconds)) {
        if (recv(socket, sink, sizeof(sink), 0) <= 0) return true;
    }
    return false;
}
