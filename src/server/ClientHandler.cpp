#include "server/ClientHandler.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <type_traits>

#include "framework/NexoBase.h"
#include "framework/Usleep.h"
#include "logging/Log.h"
#include "server/LibServer.h"
#include "server/SocketIO.h"
#include "system/LibInterface.h"
#include "system/System_.h"

namespace {

const SendReport serverSendReport{"first send failed in SendReply() \n",
                                  "second send() failed in SendReply() \n", true};

// The log word of a message type the handler only notes.
const char* typeName(eMsgType type) {
    switch (type) {
        case MSGTYPE_NONE:
            return "MSGTYPE_NONE";
        case MSGTYPE_STATEUPDATE:
            return "MSGTYPE_STATEUPDATE";
        case MSGTYPE_SETREPLY:
            return "MSGTYPE_SETREPLY";
        case MSGTYPE_GETREPLY:
            return "MSGTYPE_GETREPLY";
        case MSGTYPE_STATUSREPLY:
            return "MSGTYPE_STATUSREPLY";
        case MSGTYPE_ERROR:
            return "MSGTYPE_ERROR";
        default:
            return "unknown";
    }
}

template <typename Entry>
void logEntries(const char* countWord, const std::vector<Entry>& entries) {
    Log::log(OUTPUT_INFORMATIVE) << countWord << entries.size() << "\n";
    for (const Entry& entry : entries) {
        if constexpr (std::is_same_v<Entry, std::string>) {
            Log::log(OUTPUT_INFORMATIVE) << entry << "\n";
        } else {
            Log::log(OUTPUT_INFORMATIVE) << entry.name << "\n";
        }
    }
}

}  // namespace

ClientHandler::ClientHandler(LibServer& server, int socket)
    : clientSocket(socket), server(server) {}

// A run still going is stopped and its facade deleted, which waits for the run thread: a
// scene left alive would stay in the process-wide lists of interfaces, sources and test
// points and disturb the next client's runs.
ClientHandler::~ClientHandler() {
    DisconnectServer();
    DisconnectClient();
    DeleteSystem(&system);
    StopProcessing();
    delete lib;
}

bool ClientHandler::IsConnected() const { return clientSocket != -1; }
bool ClientHandler::IsConnectedClient() const { return clientSocket != -1; }
bool ClientHandler::IsConnectedServer() const { return serverSocket != -1; }
void ClientHandler::SetProcessLocally(bool locally) { processLocally = locally; }

bool ClientHandler::Disconnect(int socket) {
    if (socket != -1 && close(socket) != 0) {
        Log::log(OUTPUT_ERROR) << "close failed in DisconnectClient()... \n";
        LogWinError();
    }
    return true;
}

bool ClientHandler::DisconnectClient() {
    Disconnect(clientSocket);
    clientSocket = -1;
    return true;
}

bool ClientHandler::DisconnectServer() {
    StopServer();
    Disconnect(serverSocket);
    serverSocket = -1;
    return true;
}

bool ClientHandler::ReceiveMessage() {
    bool fromClient = ReceiveMessageClient();
    bool fromServer = ReceiveMessageServer();
    return fromClient || fromServer;
}

bool ClientHandler::ReceiveMessageClient() {
    ClientServerMessage msg;
    if (!ReceiveMessage(clientSocket, msg)) return false;
    return processLocally ? ProcessMessage(msg) : ForwardMessage(msg);
}

bool ClientHandler::ReceiveMessageServer() {
    ClientServerMessage msg;
    if (!ReceiveMessage(serverSocket, msg)) return false;
    return ReturnMessage(msg);
}

bool ClientHandler::ReceiveMessage(int& socket, ClientServerMessage& msg) {
    if (socket == -1) return false;
    std::string text;
    switch (ReceiveFrame(socket, text, true)) {
        case FrameStatus::nothing:
            Log::log(OUTPUT_INFORMATIVE) << "ClientHandler::ReceiveMessage(int sockId, "
                                            "ClientServerMessage& msg) - first socketReceive() "
                                            "failed\n";
            LogWinError();
            Log::log(OUTPUT_DEBUG) << "\n";
            return false;
        case FrameStatus::received:
            return msg.FromString(text.c_str());
        case FrameStatus::empty:
            return false;
        case FrameStatus::closed:
        case FrameStatus::broken:
            break;
    }
    // The peer has gone, or the stream is out of step: this connection is over.
    Disconnect(socket);
    socket = -1;
    return false;
}

bool ClientHandler::SendRawMessage(int socket, const char* text) {
    if (socket == -1) return false;
    if (SendFrame(socket, text, serverSendReport)) return true;
    Disconnect(socket);
    return false;
}

bool ClientHandler::sendTo(int& socket, ClientServerMessage& msg) {
    std::string text;
    msg.ToString(text);
    Log::log(OUTPUT_INFORMATIVE) << "server sending msg: \n" << text;
    if (SendRawMessage(socket, text.c_str())) return true;
    socket = -1;
    return false;
}

bool ClientHandler::SendToClient(ClientServerMessage& msg) { return sendTo(clientSocket, msg); }
bool ClientHandler::SendToServer(ClientServerMessage& msg) { return sendTo(serverSocket, msg); }

bool ClientHandler::SendMsg(eMsgType type, eMsg code) {
    ClientServerMessage msg;
    msg.SetType(type);
    msg.SetMsg(code);
    return SendToClient(msg);
}

template <typename Payload>
static bool sendWithPayload(ClientHandler& handler, eMsgType type, eMsg code,
                            const Payload& payload) {
    ClientServerMessage msg;
    msg.SetType(type);
    msg.SetMsg(code);
    msg.SetMsg(payload);
    return handler.SendToClient(msg);
}

bool ClientHandler::SendMsg(eMsgType type, eMsg code, bool value) {
    return sendWithPayload(*this, type, code, value);
}

bool ClientHandler::SendMsg(eMsgType type, eMsg code, const std::string& text) {
    return sendWithPayload(*this, type, code, text);
}

bool ClientHandler::SendMsg(eMsgType type, eMsg code, const std::vector<std::string>& list) {
    return sendWithPayload(*this, type, code, list);
}

bool ClientHandler::SendMsg(eMsgType type, eMsg code, e_System_* sent) {
    return sendWithPayload(*this, type, code, sent);
}

bool ClientHandler::SendMsg(eMsgType type, eMsg code, std::vector<AccessPointOption>* options) {
    return sendWithPayload(*this, type, code, *options);
}

bool ClientHandler::SendMsg(eMsgType type, eMsg code, std::vector<AntennaOption>* options) {
    return sendWithPayload(*this, type, code, *options);
}

bool ClientHandler::ForwardMessage(ClientServerMessage& msg) {
    std::string text;
    msg.ToString(text);
    return SendRawMessage(serverSocket, text.c_str());
}

bool ClientHandler::ReturnMessage(ClientServerMessage& msg) {
    std::string text;
    msg.ToString(text);
    return SendRawMessage(clientSocket, text.c_str());
}

bool ClientHandler::IsConfigMsg(ClientServerMessage& msg) {
    bool setOrGet = msg.TestType(MSGTYPE_SET) || msg.TestType(MSGTYPE_GET);
    return setOrGet && (msg.TestMsg(MSG_SERVERTHREADED) || msg.TestMsg(MSG_SERVERPARALLEL));
}

bool ClientHandler::ProcessMessage(ClientServerMessage& msg) {
    eMsgType type = MSGTYPE_NONE;
    eMsg code = MSG_NONE;
    msg.GetType(type);
    msg.GetMsg(code);
    switch (type) {
        case MSGTYPE_CONTROL:
            return processControl(code, msg);
        case MSGTYPE_SET:
            return processSet(code, msg);
        case MSGTYPE_GET:
            return processGet(code);
        case MSGTYPE_STATUSQUERY:
            CheckProcessing();
            return true;
        default:
            Log::log(OUTPUT_INFORMATIVE) << "msgType = " << typeName(type) << "\n";
            return true;
    }
}

void ClientHandler::takeSystem(ClientServerMessage& msg) {
    DeleteSystem(&system);
    msg.GetMsg(&system);
}

bool ClientHandler::processControl(eMsg code, ClientServerMessage& msg) {
    switch (code) {
        case MSG_DISCONNECT:
            StopProcessing();
            DisconnectClient();
            break;
        case MSG_BOUNCESYSTEM:
            takeSystem(msg);
            USLEEP(1000000);
            // The reply message owns what it sends.
            SendMsg(MSGTYPE_CONTROL, MSG_SYSTEMRESULT, system);
            system = nullptr;
            break;
        case MSG_PROCESSSYSTEM:
            takeSystem(msg);
            StartProcessing();
            break;
        case MSG_STOPPROCESSING:
            StopProcessing();
            break;
        case MSG_SHUTDOWN:
            StopProcessing();
            DisconnectClient();
            server.ShutDown();
            break;
        default:
            break;
    }
    return true;
}

bool ClientHandler::processSet(eMsg code, ClientServerMessage& msg) {
    bool flag = false;
    switch (code) {
        case MSG_DATALOCATION:
            msg.GetMsg(dataLocation);
            break;
        case MSG_SERVERTHREADED:
            if (msg.GetMsg(flag)) serverThreaded = flag;
            break;
        case MSG_SERVERPARALLEL:
            if (msg.GetMsg(flag)) serverParallel = flag;
            break;
        default:
            break;
    }
    return true;
}

bool ClientHandler::processGet(eMsg code) {
    switch (code) {
        case MSG_VERSION:
            SendMsg(MSGTYPE_GETREPLY, MSG_VERSION, std::string("beta"));
            break;
        case MSG_DATALOCATION:
            SendMsg(MSGTYPE_GETREPLY, MSG_DATALOCATION, dataLocation);
            break;
        case MSG_MATERIALNAMES:
        case MSG_MATERIALDESC:
        case MSG_APNAMES:
        case MSG_APDESC:
        case MSG_APDETAILS:
        case MSG_ANTNAMES:
        case MSG_ANTDESC:
        case MSG_ANTDETAILS:
            replyCatalogue(code);
            break;
        default:
            break;
    }
    return true;
}

LibInterface& ClientHandler::library() {
    if (lib == nullptr) lib = new LibInterface();
    return *lib;
}

bool ClientHandler::replyCatalogue(eMsg code) {
    LibInterface& facade = library();
    std::vector<std::string> list;
    if (code == MSG_APDETAILS) {
        std::vector<AccessPointOption> options;
        facade.GetAPOptions(options);
        logEntries("APCount = ", options);
        return SendMsg(MSGTYPE_GETREPLY, code, &options);
    }
    if (code == MSG_ANTDETAILS) {
        std::vector<AntennaOption> options;
        facade.GetAntennaOptions(options);
        logEntries("APCount = ", options);
        return SendMsg(MSGTYPE_GETREPLY, code, &options);
    }
    const char* countWord = "APCount = ";
    switch (code) {
        case MSG_MATERIALNAMES:
            facade.GetMaterialNames(list);
            countWord = "materialCount = ";
            break;
        case MSG_MATERIALDESC:
            facade.GetMaterialDescriptions(list);
            countWord = "materialCount = ";
            break;
        case MSG_APNAMES:
            facade.GetAPNames(list);
            break;
        case MSG_APDESC:
            facade.GetAPDescriptions(list);
            break;
        case MSG_ANTNAMES:
            facade.GetAntennaNames(list);
            break;
        default:
            facade.GetAntennaDescriptions(list);
            break;
    }
    logEntries(countWord, list);
    return SendMsg(MSGTYPE_GETREPLY, code, list);
}

bool ClientHandler::StartProcessing() {
    Log::log(OUTPUT_INFORMATIVE) << "StartProcessing() - begin "
                                 << (serverParallel ? "parallel" : "not parallel") << ", "
                                 << (serverThreaded ? "threaded" : "not threaded") << "\n";
    LibInterface& facade = library();
    facade.SetSystem(new System_(system));
    system = nullptr;
    facade.BeginUpdate(serverThreaded, serverParallel);
    processing = true;
    return true;
}

void ClientHandler::CheckProcessing() {
    if (lib == nullptr) return;
    if (!lib->UpdateComplete()) {
        Log::log(OUTPUT_INFORMATIVE) << "ClientHandler::CheckProcessing() - still processing\n";
        return;
    }
    if (lib->ResultsExtracted()) return;
    lib->ExtractResults();
    SendMsg(MSGTYPE_STATEUPDATE, MSG_UPDATESUCCESS);
    e_System_* result = lib->GetSystem();
    if (result == nullptr) {
        Log::log(OUTPUT_INFORMATIVE) << "ClientHandler::CheckProcessing() - return NULL system "
                                        "result\n";
    }
    SendMsg(MSGTYPE_CONTROL, MSG_SYSTEMRESULT, result);
    processing = false;
    delete lib;
    lib = nullptr;
}

bool ClientHandler::IsProcessing() const { return lib != nullptr && !lib->UpdateComplete(); }

bool ClientHandler::StopProcessing() {
    if (lib != nullptr) lib->StopProcessing();
    return true;
}

// Waits only while a run is going: a facade that holds catalogues alone never completes.
bool ClientHandler::WaitTillComplete() {
    while (lib != nullptr && lib->IsRunning()) {
        USLEEP(100000);
        Log::log(OUTPUT_INFORMATIVE) << "still processing\n";
    }
    return true;
}

bool ClientHandler::StopSim() {
    CheckProcessing();
    DeleteSystem(&system);
    if (lib != nullptr) {
        lib->ClearStaticSpace();
        lib->ClearResults();
        delete lib;
        lib = nullptr;
    }
    return true;
}

bool ClientHandler::StartServer(int port) {
    USLEEP(100000);
    std::string directory;
    NexoBase::GetLocalAddress(directory);
    std::string command = directory + "LibServerMain";
    if (port > 0) command += " -p" + std::to_string(port) + " ";
    command += " &";
    if (std::system(command.c_str()) == -1) {
        Log::log(OUTPUT_ERROR) << "ClientHandler::StartServer() - calling system(" << command
                               << ") failed, child process could not be created\n";
    }
    USLEEP(100000);
    return true;
}

bool ClientHandler::ConnectToServer(int port) {
    serverSocket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (serverSocket == -1) {
        Log::log(OUTPUT_ERROR) << "Error : Could not create socket.\n";
        return false;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(serverSocket, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
        Log::log(OUTPUT_ERROR) << "Error : Connect Failed \n";
        Disconnect(serverSocket);
        serverSocket = -1;
        return false;
    }
    return true;
}

bool ClientHandler::StopServer() {
    if (!IsConnectedServer()) return true;
    ClientServerMessage msg;
    msg.SetType(MSGTYPE_CONTROL);
    msg.SetMsg(MSG_SHUTDOWN);
    SendToServer(msg);
    return true;
}

bool ClientHandler::ServerLocalToClient() { return true; }
