#pragma once

#include <netinet/in.h>
#include <pthread.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "client/LibProcessor.h"
#include "framework/Lockable.h"
#include "framework/Mutex.h"
#include "server/ClientServerMessage.h"
#include "system/SystemRecords.h"

// Called for each message that arrives, with the message freshly parsed for it.
using MessageCallback = std::function<void(ClientServerMessage&)>;

// The last system that a server returned, guarded by systemMutex. It belongs to whoever
// takes it through GetSystemReply(); the next ProcessSystem or BounceSystem forgets it.
extern e_System_* clientReceivedSystem;
extern Lockable systemMutex;

// The first callback of every client: keeps a returned system in clientReceivedSystem
// and reports an error message on standard output.
void processorHandleMessage(ClientServerMessage& msg);

// The client end of a connection to the server: a socket, a listener thread that reads
// it and stores what arrives, and the sends of the client's requests.
//
// The listener reads; the user's thread sends. The listener never closes the socket: when
// the server goes away, or the client must drop the connection from the listener, it
// shuts the socket down and marks the client unconnected, and the socket is closed by the
// next Disconnect, connect or the destructor on the user's side.
class LibClient : public LibProcessor {
public:
    LibClient();
    ~LibClient() override;

    void AddReceiveMesageCallback(MessageCallback fn);

    // Starts the listener thread; false if one is still there. Exits the process when
    // no thread can be made.
    bool StartListener();
    // Asks the listener to end and waits for it at most 1000 ms.
    bool StopListener();

    // Send a system to be simulated, or to be returned as it is. The caller keeps the
    // system; a street map named by its osmFile is read into its osmContent first.
    bool ProcessSystem(e_System_* system);
    bool BounceSystem(e_System_* system);
    // The last system returned by the server, or null; the caller takes it over.
    e_System_* GetSystemReply();

    bool RequestResources();
    bool GetState();
    bool StopProcessing();

    bool IsConnected() const;
    // Leaves the server: unless forced, tells it first. False when not connected.
    bool Disconnect(bool force);

    bool SendRawMessage(const char* text);
    bool SendMsg(eMsgType type, eMsg msg);
    bool SendMsg(eMsgType type, eMsg msg, e_System_* system);
    bool SendMsg(eMsgType type, eMsg msg, const std::string& text);
    bool SendMsg(eMsgType type, eMsg msg, const char* text);
    bool SendMsg(eMsgType type, eMsg msg, bool value);

    // Reads one message, if one is there, and hands it to every callback in turn.
    bool GetMsg(ClientServerMessage& msg);
    bool ProcessMessage(ClientServerMessage& msg) override;
    // The listener's body: reads and processes until disconnected or stopped.
    void CheckConn();

protected:
    // Connects to `address` (network byte order) at `port` and starts the listener.
    bool ConnectSocket(in_addr_t address, int port);
    // Ends the listener, waiting for it, and closes the socket. The listener makes virtual
    // calls on this object, so every derived client calls this first in its destructor:
    // the listener is gone before any part of the object is destroyed.
    void EndConnection();

    std::atomic<int> clientSocket{-1};

private:
    static void* ListenerEntry(void* client);
    bool OnListenerThread() const;
    bool Send(ClientServerMessage& msg);
    template <typename... Payload>
    bool SendWith(eMsgType type, eMsg code, const Payload&... payload);
    bool SendSystem(eMsg code, e_System_* system, const char* failure);
    bool GetLocalResources(e_System_* system);
    bool DeliverText(const std::string& text, ClientServerMessage& msg);
    // Marks the connection gone and shuts the socket down; safe from either thread.
    void DropConnection();
    void ShutdownSocket();
    void CloseSocket();

    // The open socket, if any; only the user's side closes it.
    int ownedSocket = -1;
    Mutex readMutex;
    std::mutex callbacksLock;
    std::vector<MessageCallback> callbacks;
    pthread_t listenerThread{};
    // A listener thread exists that has not been joined.
    std::atomic<bool> listenerStarted{false};
};
