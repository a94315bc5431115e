#pragma once

#include <vector>

#include "framework/Lockable.h"
#include "framework/SharedValue.h"
#include "logging/OutputLevel.h"

class ClientHandler;

// The connection service: one listening socket and a handler for each accepted client,
// served from the main thread's poll loop.
class LibServer : public Lockable {
public:
    LibServer();
    ~LibServer() override;

    bool SetLogCSV(const char* base);
    void LogLine(const char* text);
    void SetLogLevel(eOutputLevel level);

    void ShutDown();
    bool IsShuttingDown();
    bool IsListening() const;
    bool ListenForClients(int port, bool localOnly);
    bool AcceptClient();
    bool DisconnectListener();
    void SetMultiProcess(bool multi);

    bool IsConnected() const;
    bool DisconnectAllClients();
    bool CheckClients();
    bool ReceiveMessage();
    bool CheckProcessing();
    bool IsProcessing() const;
    bool StopProcessing();
    bool WaitTillClientsComplete();
    bool StopSim();

private:
    bool failListen(const char* call);
    // Calls the operation on every handler, without stopping at a false; the results and-ed.
    bool eachHandler(bool (ClientHandler::*operation)());

    bool multiProcess = false;
    int listenSocket = -1;
    std::vector<ClientHandler*> clients;
    int nextServerPort = -1;
    SharedValue shuttingDown{false};
};
