#pragma once

#include <string>
#include <vector>

#include "server/ClientServerMessage.h"
#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"
#include "system/SystemRecords.h"

class LibInterface;
class LibServer;

// The server's state for one accepted connection. It acts on the client's messages
// itself, or relays them unread to a child server of its own.
class ClientHandler {
public:
    ClientHandler(LibServer& server, int socket);
    virtual ~ClientHandler();

    bool IsConnected() const;
    bool IsConnectedClient() const;
    bool IsConnectedServer() const;
    bool Disconnect(int socket);
    bool DisconnectClient();
    bool DisconnectServer();
    void SetProcessLocally(bool locally);

    bool ReceiveMessage();
    bool ReceiveMessageClient();
    bool ReceiveMessageServer();
    // Reads one message; a socket whose peer has gone, or whose stream broke, is closed
    // and set to -1.
    bool ReceiveMessage(int& socket, ClientServerMessage& msg);
    bool SendRawMessage(int socket, const char* text);
    bool SendToClient(ClientServerMessage& msg);
    bool SendToServer(ClientServerMessage& msg);

    bool SendMsg(eMsgType type, eMsg msg);
    bool SendMsg(eMsgType type, eMsg msg, bool value);
    bool SendMsg(eMsgType type, eMsg msg, const std::string& text);
    bool SendMsg(eMsgType type, eMsg msg, const std::vector<std::string>& list);
    // The message takes the system and releases it after sending, unless a wrapper holds it.
    bool SendMsg(eMsgType type, eMsg msg, e_System_* system);
    bool SendMsg(eMsgType type, eMsg msg, std::vector<AccessPointOption>* options);
    bool SendMsg(eMsgType type, eMsg msg, std::vector<AntennaOption>* options);

    bool ForwardMessage(ClientServerMessage& msg);
    bool ReturnMessage(ClientServerMessage& msg);
    bool IsConfigMsg(ClientServerMessage& msg);
    bool ProcessMessage(ClientServerMessage& msg);

    bool StartProcessing();
    void CheckProcessing();
    bool IsProcessing() const;
    bool StopProcessing();
    bool WaitTillComplete();
    bool StopSim();

    bool StartServer(int port);
    bool ConnectToServer(int port);
    bool StopServer();
    bool ServerLocalToClient();

private:
    bool processControl(eMsg code, ClientServerMessage& msg);
    bool processSet(eMsg code, ClientServerMessage& msg);
    bool processGet(eMsg code);
    bool replyCatalogue(eMsg code);
    LibInterface& library();
    bool sendTo(int& socket, ClientServerMessage& msg);
    void takeSystem(ClientServerMessage& msg);

    int clientSocket;
    bool processLocally = true;
    int serverSocket = -1;
    e_System_* system = nullptr;
    LibInterface* lib = nullptr;
    bool serverThreaded = true;
    bool serverParallel = true;
    bool processing = false;
    std::string dataLocation;
    LibServer& server;
};
