#pragma once

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "server/ClientServerMessage.h"
#include "server/SocketIO.h"

// What the fake server read from its client.
struct ReceivedMessage {
    eMsgType type = MSGTYPE_NONE;
    eMsg msg = MSG_NONE;
    std::string text;
    bool hadSystem = false;
    std::string osmContent;
};

// A server in a thread, listening on a free loopback port, for one client at a time. It
// records every message it reads and lets a responder answer it.
class FakeServer {
  public:
    using Responder = std::function<void(FakeServer&, ClientServerMessage&)>;

    FakeServer() {
        listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = 0;
        bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address));
        listen(listener, 4);
        socklen_t size = sizeof(address);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
        worker = std::thread([this] { Serve(); });
    }

    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    ~FakeServer() {
        running = false;
        worker.join();
        close(listener);
    }

    int Port() const { return port; }

    void SetResponder(Responder newResponder) {
        std::lock_guard<std::mutex> guard(lock);
        responder = std::move(newResponder);
    }

    // Sends a message to the connected client.
    bool Send(const ClientServerMessage& message) {
        std::string text;
        message.ToString(text);
        return SendFrame(connection, text.c_str(), {"fake first\n", "fake second\n"});
    }

    bool Send(eMsgType type, eMsg code) {
        ClientServerMessage message;
        message.SetType(type);
        message.SetMsg(code);
        return Send(message);
    }

    // Ends the connection from the server's side.
    void CloseClient() {
        int socket = connection;
        if (socket != -1) shutdown(socket, SHUT_RDWR);
    }

    bool Connected() const { return connection != -1; }
    int Connections() const { return connections; }

    std::vector<ReceivedMessage> Received() {
        std::lock_guard<std::mutex> guard(lock);
        return received;
    }

  private:
    void Serve() {
        while (running) {
            pollfd waiting{listener, POLLIN, 0};
            if (poll(&waiting, 1, 20) <= 0) continue;
            int socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            if (socket == -1) continue;
            timeval timeout{0, 100000};
            setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
            ++connections;
            connection = socket;
            ReadClient(socket);
            connection = -1;
            close(socket);
        }
    }

    void ReadClient(int socket) {
        while (running) {
            std::string text;
            FrameStatus status = ReceiveFrame(socket, text);
            if (status == FrameStatus::closed || status == FrameStatus::broken) return;
            if (status == FrameStatus::received) Handle(text);
        }
    }

    void Handle(const std::string& text) {
        ClientServerMessage message;
        message.FromString(text.c_str());
        ReceivedMessage record;
        record.text = text;
        message.GetType(record.type);
        message.GetMsg(record.msg);
        e_System_* system = nullptr;
        if (text.find("<System_") != std::string::npos && message.GetMsg(&system)) {
            record.hadSystem = true;
            if (system->osmContent != nullptr) record.osmContent = system->osmContent;
            message.SetMsg(system);
        }
        Responder current;
        {
            std::lock_guard<std::mutex> guard(lock);
            received.push_back(record);
            current = responder;
        }
        if (current) current(*this, message);
    }

    int listener = -1;
    int port = 0;
    std::atomic<int> connection{-1};
    std::atomic<int> connections{0};
    std::atomic<bool> running{true};
    std::mutex lock;
    Responder responder;
    std::vector<ReceivedMessage> received;
    std::thread worker;
};

// Waits for `condition`, giving up after a generous limit.
inline bool WaitUntil(const std::function<bool()>& condition, int milliseconds = 5000) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}
