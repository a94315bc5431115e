#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "server/ClientServerMessage.h"
#include "server/SocketIO.h"
#include "support/RawClient.h"
#include "support/WaitUntil.h"

// What the fake server read from its client.
struct ReceivedMessage {
    eMsgType type = MSGTYPE_NONE;
    eMsg msg = MSG_NONE;
    std::string text;
};

// A server in a thread on a free loopback port, for one client at a time. It records every
// message it reads and lets a responder answer it.
class FakeServer {
public:
    using Responder = std::function<void(FakeServer&, ClientServerMessage&)>;

    explicit FakeServer(Responder answer = nullptr) : responder(std::move(answer)) {
        sockaddr_in address = Loopback(0);
        socklen_t size = sizeof(address);
        bind(listener, reinterpret_cast<sockaddr*>(&address), size);
        listen(listener, 4);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
        worker = std::thread([this] { Serve(); });
    }
    ~FakeServer() {
        running = false;
        worker.join();
        close(listener);
    }

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
    void CloseClient() { shutdown(connection, SHUT_RDWR); }
    std::vector<ReceivedMessage> Received() {
        std::lock_guard<std::mutex> guard(lock);
        return received;
    }
    std::vector<eMsg> ReceivedCodes() {
        std::vector<eMsg> codes;
        for (const ReceivedMessage& message : Received()) codes.push_back(message.msg);
        return codes;
    }

    int port = 0;
    std::atomic<int> connection{-1};
    std::atomic<int> connections{0};

private:
    void Serve() {
        while (running) {
            pollfd waiting{listener, POLLIN, 0};
            if (poll(&waiting, 1, 20) <= 0) continue;
            int socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            timeval timeout{0, 100000};
            setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
            connection = socket;
            ++connections;
            for (FrameStatus status = FrameStatus::nothing;
                 running && status != FrameStatus::closed && status != FrameStatus::broken;) {
                std::string text;
                status = ReceiveFrame(socket, text);
                if (status == FrameStatus::received) Handle(text);
            }
            connection = -1;
            close(socket);
        }
    }

    void Handle(const std::string& text) {
        ClientServerMessage message;
        message.FromString(text.c_str());
        ReceivedMessage record{MSGTYPE_NONE, MSG_NONE, text};
        message.GetType(record.type);
        message.GetMsg(record.msg);
        {
            std::lock_guard<std::mutex> guard(lock);
            received.push_back(record);
        }
        if (responder) responder(*this, message);
    }

    int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::atomic<bool> running{true};
    std::mutex lock;
    const Responder responder;
    std::vector<ReceivedMessage> received;
    std::thread worker;
};
