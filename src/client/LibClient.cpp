#include "client/LibClient.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "framework/Usleep.h"
#include "logging/Log.h"
#include "server/SocketIO.h"

e_System_* clientReceivedSystem = nullptr;
Lockable systemMutex;

namespace {

const SendReport clientReport{"LibClient::SendRawMessage() - first send failed\n",
                              "LibClient::SendRawMessage() - second send failed\n"};

// The client whose listener runs on this thread, if any.
thread_local const LibClient* listenerOwner = nullptr;

constexpr int listenerJoinMilliseconds = 1000;

timespec DeadlineAfter(int milliseconds) {
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += milliseconds / 1000;
    deadline.tv_nsec += (milliseconds % 1000) * 1000000L;
    if (deadline.tv_nsec >= 1000000000L) {
        deadline.tv_sec += 1;
        deadline.tv_nsec -= 1000000000L;
    }
    return deadline;
}

}  // namespace

void processorHandleMessage(ClientServerMessage& msg) {
    if (msg.TestType(MSGTYPE_CONTROL) && msg.TestMsg(MSG_SYSTEMRESULT)) {
        e_System_* system = nullptr;
        if (msg.GetMsg(&system)) {
            systemMutex.lock(true);
            clientReceivedSystem = system;
            systemMutex.unlock();
        }
    }
    if (msg.TestType(MSGTYPE_ERROR)) {
        std::printf("received msg .. error\n");
        std::fflush(stdout);
    }
}

LibClient::LibClient() { AddReceiveMesageCallback(processorHandleMessage); }

LibClient::~LibClient() { EndConnection(); }

void LibClient::EndConnection() {
    listenerRunning = false;
    ShutdownSocket();
    if (listenerStarted && !OnListenerThread()) {
        pthread_join(listenerThread, nullptr);
        listenerStarted = false;
    }
    CloseSocket();
}

void LibClient::AddReceiveMesageCallback(MessageCallback fn) {
    std::lock_guard<std::mutex> guard(callbacksLock);
    callbacks.push_back(std::move(fn));
}

bool LibClient::StartListener() {
    if (listenerStarted) {
        Log::log(1) << "LibClient::StartListener() - a listener is still running\n";
        return false;
    }
    listenerRunning = true;
    if (pthread_create(&listenerThread, nullptr, ListenerEntry, this) != 0) {
        Log::log(1) << "Error - CreateThread() failed.\n";
        exit(1);
    }
    listenerStarted = true;
    return true;
}

void* LibClient::ListenerEntry(void* client) {
    auto* self = static_cast<LibClient*>(client);
    listenerOwner = self;
    self->CheckConn();
    self->listenerRunning = false;
    listenerOwner = nullptr;
    return nullptr;
}

bool LibClient::OnListenerThread() const { return listenerOwner == this; }

bool LibClient::StopListener() {
    listenerRunning = false;
    if (!listenerStarted || OnListenerThread()) return true;
    timespec deadline = DeadlineAfter(listenerJoinMilliseconds);
    if (pthread_timedjoin_np(listenerThread, nullptr, &deadline) != 0) {
        Log::log(2) << "LibClient::StopListener() - listener still running after "
                    << listenerJoinMilliseconds << " ms\n";
        return false;
    }
    listenerStarted = false;
    return true;
}

void LibClient::CheckConn() {
    ClientServerMessage msg;
    while (IsConnected() && listenerRunning) {
        if (GetMsg(msg)) {
            ProcessMessage(msg);
        } else {
            USLEEP(1000);
        }
        Log::Flush();
    }
}

bool LibClient::GetMsg(ClientServerMessage& msg) {
    int socket = clientSocket;
    if (socket == -1) {
        Log::log(1) << "LibClient::GetMsg() - but not connected\n";
        return false;
    }
    if (!readMutex.Lock(false)) {
        Log::log(3) << "LibClient::GetMsg() - mutex locked, try again later\n";
        return false;
    }
    std::string text;
    FrameStatus status = ReceiveFrame(socket, text);
    readMutex.Unlock();
    switch (status) {
        case FrameStatus::received:
            return DeliverText(text, msg);
        case FrameStatus::broken:
            Log::log(3) << "LibClient::GetMsg() - insufficient chars received\n";
            DropConnection();
            return false;
        case FrameStatus::closed:
            if (listenerRunning) {
                Log::log(3) << "LibClient::GetMsg() - the server closed the connection\n";
            }
            DropConnection();
            return false;
        case FrameStatus::empty:
            Log::log(3) << "LibClient::GetMsg() - insufficient chars received\n";
            return false;
        case FrameStatus::nothing:
            break;
    }
    return false;
}

bool LibClient::DeliverText(const std::string& text, ClientServerMessage& msg) {
    std::vector<MessageCallback> current;
    {
        std::lock_guard<std::mutex> guard(callbacksLock);
        current = callbacks;
    }
    // Each callback gets its own parse, so what one takes out of the message (the system)
    // is still there for the next.
    for (MessageCallback& callback : current) {
        msg.Reset();
        if (!msg.FromString(text.c_str())) return false;
        callback(msg);
    }
    return true;
}

bool LibClient::ProcessMessage(ClientServerMessage& msg) {
    if (msg.TestType(MSGTYPE_CONTROL) && msg.TestMsg(MSG_DISCONNECT)) {
        Disconnect(false);
        return true;
    }
    LibProcessor::ProcessMessage(msg);
    if (msg.TestType(MSGTYPE_STATUSREPLY) && msg.TestMsg(MSG_CALCSUCCESS)) Disconnect(false);
    return true;
}

bool LibClient::IsConnected() const { return clientSocket != -1; }

bool LibClient::Disconnect(bool force) {
    if (!force) {
        if (IsConnected()) {
            SendMsg(MSGTYPE_CONTROL, MSG_DISCONNECT);
        } else {
            Log::log(1) << "LibClient::Disconnect() - not connected\n";
            StopListener();
            CloseSocket();
            return false;
        }
    }
    if (OnListenerThread()) {
        // The listener cannot wait for itself: it ends its loop and leaves the socket to
        // the user's side.
        listenerRunning = false;
        if (!force) USLEEP(50000);
        DropConnection();
        return true;
    }
    ShutdownSocket();
    StopListener();
    if (!force) USLEEP(50000);
    CloseSocket();
    return true;
}

void LibClient::DropConnection() {
    int socket = clientSocket.exchange(-1);
    if (socket != -1) shutdown(socket, SHUT_RDWR);
}

void LibClient::ShutdownSocket() {
    if (ownedSocket != -1) shutdown(ownedSocket, SHUT_RDWR);
}

void LibClient::CloseSocket() {
    clientSocket = -1;
    // A listener that did not end in time may still read the socket: it stays open for
    // the destructor, which waits for the listener.
    if (ownedSocket == -1 || listenerStarted) return;
    close(ownedSocket);
    ownedSocket = -1;
}

bool LibClient::ConnectSocket(in_addr_t address, int port) {
    if (ownedSocket != -1 || listenerStarted) Disconnect(true);
    if (listenerStarted) {
        Log::log(1) << "Error : Start listener Failed \n";
        return false;
    }
    // Close-on-exec keeps the connection out of a server process that this client starts.
    int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket == -1) {
        Log::log(1) << "Error : Could not create socket.\n";
        LogWinError();
        return false;
    }
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_addr.s_addr = address;
    server.sin_port = htons(static_cast<uint16_t>(port));
    if (connect(socket, reinterpret_cast<sockaddr*>(&server), sizeof(server)) != 0) {
        Log::log(1) << "Error : Connect Failed \n";
        LogWinError();
        close(socket);
        return false;
    }
    // A request goes out as a length and a text in two sends: without delay, the text
    // does not wait for the length to be acknowledged.
    int noDelay = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof(noDelay));
    ownedSocket = socket;
    clientSocket = socket;
    if (!StartListener()) {
        Log::log(1) << "Error : Start listener Failed \n";
        return false;
    }
    return true;
}

bool LibClient::SendRawMessage(const char* text) {
    int socket = clientSocket;
    if (socket == -1) {
        Log::log(1) << "LibClient::SendRawMessage() - but not connected\n";
        return false;
    }
    if (!SendFrame(socket, text, clientReport)) {
        Disconnect(true);
        return false;
    }
    return true;
}

bool LibClient::Send(ClientServerMessage& msg) {
    std::string text;
    return msg.ToString(text) && SendRawMessage(text.c_str());
}

template <typename... Payload>
bool LibClient::SendWith(eMsgType type, eMsg code, const Payload&... payload) {
    ClientServerMessage msg;
    msg.SetType(type);
    msg.SetMsg(code);
    (msg.SetMsg(payload), ...);
    return Send(msg);
}

bool LibClient::SendMsg(eMsgType type, eMsg code) { return SendWith(type, code); }

bool LibClient::SendMsg(eMsgType type, eMsg code, e_System_* system) {
    ClientServerMessage msg;
    msg.SetType(type);
    msg.SetMsg(code);
    msg.SetMsg(system);
    std::string text;
    msg.ToString(text);
    // The caller keeps its system: take it back before the message would release it.
    e_System_* returned = nullptr;
    if (system != nullptr) msg.GetMsg(&returned);
    return SendRawMessage(text.c_str());
}

bool LibClient::SendMsg(eMsgType type, eMsg code, const std::string& text) {
    return SendWith(type, code, text);
}

bool LibClient::SendMsg(eMsgType type, eMsg code, const char* text) {
    return SendWith(type, code, text);
}

bool LibClient::SendMsg(eMsgType type, eMsg code, bool value) {
    return SendWith(type, code, value);
}

bool LibClient::ProcessSystem(e_System_* system) {
    return SendSystem(MSG_PROCESSSYSTEM, system, "LibClient::ProcessSystem() - failed\n");
}

bool LibClient::BounceSystem(e_System_* system) {
    return SendSystem(MSG_BOUNCESYSTEM, system, "LibClient::BounceSystem() - failed\n");
}

bool LibClient::SendSystem(eMsg code, e_System_* system, const char* failure) {
    systemMutex.lock(true);
    clientReceivedSystem = nullptr;
    systemMutex.unlock();
    if (system != nullptr) {
        GetLocalResources(system);
        if (SendMsg(MSGTYPE_CONTROL, code, system)) {
            processing = true;
            updateSuccessful = false;
            return true;
        }
    }
    Log::log(1) << failure;
    return false;
}

bool LibClient::GetLocalResources(e_System_* system) {
    if (system->osmFile == nullptr || system->osmFile[0] == '\0') return true;
    std::ifstream file(system->osmFile, std::ios::binary);
    if (!file) {
        Log::log(1) << "LibClient::GetLocalResources() - cannot read " << system->osmFile << "\n";
        return false;
    }
    std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    free(system->osmContent);
    system->osmContent = CopyString(content.c_str());
    return true;
}

e_System_* LibClient::GetSystemReply() {
    systemMutex.lock(true);
    e_System_* system = clientReceivedSystem;
    systemMutex.unlock();
    return system;
}

bool LibClient::RequestResources() {
    const eMsg requests[] = {MSG_VERSION,    MSG_MATERIALNAMES, MSG_MATERIALDESC, MSG_APNAMES,
                             MSG_APDESC,     MSG_APDETAILS,     MSG_ANTNAMES,     MSG_ANTDESC,
                             MSG_ANTDETAILS, MSG_DATALOCATION,  MSG_ERRORLOG,     MSG_LASTERROR};
    bool allSent = true;
    for (eMsg request : requests) allSent = SendMsg(MSGTYPE_GET, request) && allSent;
    return allSent;
}

bool LibClient::GetState() { return SendMsg(MSGTYPE_STATUSQUERY, MSG_NONE); }

bool LibClient::StopProcessing() { return SendMsg(MSGTYPE_CONTROL, MSG_STOPPROCESSING); }
