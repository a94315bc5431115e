#include "server/LibServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "framework/NexoBase.h"
#include "logging/Log.h"
#include "logging/LogToCSV.h"
#include "logging/Logging.h"
#include "server/ClientHandler.h"

namespace {

// Receives the peer address of every accept; nothing reads it afterwards.
sockaddr_in clientAddress;

void activate(Logging& log, bool on) {
    if (on) {
        log.Enable();
    } else {
        log.Disable();
    }
    log.SetOutput(on);
    log.LogStraightToStream(on);
}

}  // namespace

LibServer::LibServer() = default;

LibServer::~LibServer() {
    StopProcessing();
    WaitTillClientsComplete();
    DisconnectAllClients();
    DisconnectListener();
    StopSim();
    for (ClientHandler* handler : clients) delete handler;
}

bool LibServer::SetLogCSV(const char* base) {
    NexoBase::log(2).AddWriter(new LogToCSV(base));
    return true;
}

void LibServer::LogLine(const char* text) {
    lock(true);
    NexoBase::log(2) << text;
    unlock();
}

void LibServer::SetLogLevel(eOutputLevel level) {
    activate(NexoBase::log(2), level >= 1 && level <= 4);
    activate(NexoBase::log(1), level >= 2 && level <= 4);
    activate(NexoBase::log(0), level == 4);
}

void LibServer::ShutDown() { shuttingDown.Set(true); }
bool LibServer::IsShuttingDown() { return shuttingDown.Get(); }
bool LibServer::IsListening() const { return listenSocket != -1; }
void LibServer::SetMultiProcess(bool multi) { multiProcess = multi; }

bool LibServer::failListen(const char* call) {
    Log::log(OUTPUT_ERROR) << call << "() failed: " << strerror(errno) << "\n";
    return false;
}

bool LibServer::ListenForClients(int port, bool localOnly) {
    DisconnectListener();
    // Close-on-exec keeps the sockets out of child servers started by this one.
    listenSocket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (listenSocket == -1) return failListen("socket");
    int reuse = 1;
    if (setsockopt(listenSocket, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof(reuse)) != 0) {
        return failListen("setsockopt");
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(localOnly ? INADDR_LOOPBACK : INADDR_ANY);
    if (bind(listenSocket, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
        return failListen("bind");
    }
    if (listen(listenSocket, 10) != 0) return failListen("listen");
    nextServerPort = port + 1;
    return true;
}

bool LibServer::AcceptClient() {
    if (!IsListening()) {
        Log::log(OUTPUT_ERROR) << "LibServer::AcceptClient() called but no listener\n";
        return false;
    }
    if (!multiProcess && IsConnected()) {
        Log::log(OUTPUT_ERROR)
            << "LibServer::AcceptClient() not multiprocess and already have client connected\n";
        return false;
    }
    socklen_t addressSize = sizeof(clientAddress);
    int socket = accept4(listenSocket, reinterpret_cast<sockaddr*>(&clientAddress), &addressSize,
                         SOCK_CLOEXEC);
    if (socket == -1) {
        Log::log(OUTPUT_INFORMATIVE) << "have client\n";
        return true;
    }
    auto* handler = new ClientHandler(*this, socket);
    clients.push_back(handler);
    // The receive time-out bounds the poll of a client that has nothing to say.
    timeval timeout{0, 100000};
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
    // A reply goes out as a length and a text: do not hold the text back for an ack.
    int noDelay = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof(noDelay));
    if (multiProcess) {
        handler->SetProcessLocally(false);
        handler->StartServer(nextServerPort);
        handler->ConnectToServer(nextServerPort);
        nextServerPort++;
    } else {
        handler->SetProcessLocally(true);
    }
    return true;
}

bool LibServer::DisconnectListener() {
    if (listenSocket != -1) close(listenSocket);
    listenSocket = -1;
    return true;
}

bool LibServer::IsConnected() const {
    for (ClientHandler* handler : clients) {
        if (handler->IsConnectedClient()) return true;
    }
    return false;
}

bool LibServer::CheckClients() {
    for (auto it = clients.begin(); it != clients.end(); ++it) {
        if (!(*it)->IsConnected()) {
            (*it)->StopServer();
            delete *it;
            clients.erase(it);
            break;
        }
    }
    return true;
}

bool LibServer::ReceiveMessage() {
    bool any = false;
    for (ClientHandler* handler : clients) any = handler->ReceiveMessage() || any;
    return any;
}

bool LibServer::IsProcessing() const {
    for (ClientHandler* handler : clients) {
        if (handler->IsProcessing()) return true;
    }
    return false;
}

bool LibServer::eachHandler(bool (ClientHandler::*operation)()) {
    bool all = true;
    for (ClientHandler* handler : clients) all = (handler->*operation)() && all;
    return all;
}

bool LibServer::DisconnectAllClients() { return eachHandler(&ClientHandler::DisconnectClient); }

bool LibServer::CheckProcessing() {
    for (ClientHandler* handler : clients) handler->CheckProcessing();
    return true;
}

bool LibServer::StopProcessing() { return eachHandler(&ClientHandler::StopProcessing); }

bool LibServer::WaitTillClientsComplete() { return eachHandler(&ClientHandler::WaitTillComplete); }

bool LibServer::StopSim() { return eachHandler(&ClientHandler::StopSim); }
