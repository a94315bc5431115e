#include "client/LibClientLocal.h"

#include <arpa/inet.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cctype>
#include <filesystem>
#include <fstream>

#include "framework/NexoBase.h"
#include "framework/Usleep.h"
#include "logging/Log.h"

extern char** environ;

namespace {

constexpr int pollMilliseconds = 100;
constexpr int serverShutdownMilliseconds = 2000;
constexpr int startMilliseconds = 1000;
constexpr int killSettleMilliseconds = 1000;
constexpr int killPollMilliseconds = 1000;

// The path as one shell word.
std::string Quoted(const std::string& path) {
    std::string quoted = "'";
    for (char c : path) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

bool IsNumber(const std::string& text) {
    if (text.empty()) return false;
    for (char c : text) {
        if (!std::isdigit(static_cast<unsigned char>(c))) return false;
    }
    return true;
}

}  // namespace

LibClientLocal::LibClientLocal() { NexoBase::GetLocalAddress(serverDirectory); }

LibClientLocal::~LibClientLocal() { EndConnection(); }

void LibClientLocal::SetCommandStrings(const std::string& pre, const std::string& post) {
    commandPre = pre;
    commandPost = post;
}

void LibClientLocal::SetServerDirectory(const std::string& directory) {
    serverDirectory = directory;
}

pid_t LibClientLocal::GetServerProcessId() const { return serverPid; }

bool LibClientLocal::RunCommand(const std::string& command) {
    std::string line = "exec " + command;
    char shell[] = "/bin/sh";
    char option[] = "-c";
    char* arguments[] = {shell, option, line.data(), nullptr};
    pid_t pid = -1;
    if (posix_spawn(&pid, shell, nullptr, nullptr, arguments, environ) != 0) return false;
    serverPid = pid;
    return true;
}

bool LibClientLocal::StartTheServerProcess(int port, int outputLevel) {
    std::string command = commandPre + Quoted(serverDirectory + serverName) + " ";
    if (port > 0) command += "-p" + std::to_string(port) + " ";
    if (outputLevel >= 0) command += "-o" + std::to_string(outputLevel) + " ";
    command += commandPost;
    Log::log(4) << "LibClientLocal::StartTheServerProcess() - " << command << "\n";
    if (!RunCommand(command)) {
        Log::log(1) << "LibClientLocal::StartTheServerProcess() - failed, "
                    << "If a child process could not be created, or its status could not be "
                       "retrieved\n";
        return false;
    }
    if (!WaitForServerState(true, startMilliseconds)) {
        Log::log(1) << "LibClientLocal::StartTheServerProcess() - failed, "
                    << "server not running after 1 second\n";
        return false;
    }
    USLEEP(500 * 1000);
    return true;
}

bool LibClientLocal::KillTheServerProcess() {
    if (serverPid <= 0) {
        if (!IsServerProcessRunning()) return true;
        Log::log(1) << "LibClientLocal::KillTheServerProcess() - failed, "
                    << "the running server was not started by this client\n";
        return false;
    }
    if (IsStartedServerRunning()) kill(serverPid, SIGKILL);
    USLEEP(killSettleMilliseconds * 1000);
    if (!WaitForServerState(false, killPollMilliseconds)) {
        Log::log(1) << "LibClientLocal::KillTheServerProcess() - failed, "
                    << "server strill running "
                    << (killSettleMilliseconds + killPollMilliseconds) / 1000
                    << " seconds after process kill\n";
        return false;
    }
    return true;
}

bool LibClientLocal::WaitForServerState(bool running, int milliseconds) {
    for (int waited = 0;; waited += pollMilliseconds) {
        if (IsServerProcessRunning() == running) return true;
        if (waited >= milliseconds) return false;
        USLEEP(pollMilliseconds * 1000);
    }
}

bool LibClientLocal::IsServerProcessRunning() {
    if (serverPid > 0) return IsStartedServerRunning();
    std::vector<std::string> names;
    ListProcessNames(names);
    for (const std::string& name : names) {
        if (name == serverName) return true;
    }
    return false;
}

bool LibClientLocal::IsStartedServerRunning() {
    int status = 0;
    // Reaps the server once it has ended, so that it does not linger as a zombie.
    if (waitpid(serverPid, &status, WNOHANG) == serverPid) return false;
    return ReadProcessName(std::to_string(serverPid)) == serverName;
}

std::string LibClientLocal::ReadProcessName(const std::string& pid) {
    std::ifstream file("/proc/" + pid + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

bool LibClientLocal::ListProcessNames(std::vector<std::string>& names) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        std::string pid = entry.path().filename().string();
        if (!IsNumber(pid)) continue;
        std::string name = ReadProcessName(pid);
        if (!name.empty()) names.push_back(name);
    }
    if (error) {
        Log::log(1) << "LibClientLocal::ListProcessNames() - cannot read /proc\n";
        return false;
    }
    return true;
}

bool LibClientLocal::ConnectToServer(int port) {
    if (!ConnectSocket(inet_addr("127.0.0.1"), port)) return false;
    USLEEP(200 * 1000);
    return true;
}

bool LibClientLocal::StartCheckConnect(int port) {
    bool started = StartTheServerProcess(port, -1);
    bool running = IsServerProcessRunning();
    bool connected = running && ConnectToServer(port);
    return started && running && connected;
}

bool LibClientLocal::StopServer() {
    if (!IsConnected()) {
        Log::log(1) << "LibClientLocal::StopServer() - not connected to server\n";
        return false;
    }
    bool sent = SendMsg(MSGTYPE_CONTROL, MSG_SHUTDOWN);
    for (int waited = 0; IsConnected() && waited < serverShutdownMilliseconds;
         waited += pollMilliseconds) {
        USLEEP(pollMilliseconds * 1000);
    }
    Disconnect(true);
    return sent;
}

bool LibClientLocal::StopCheckServer() {
    StopServer();
    return WaitForServerState(false, startMilliseconds);
}

bool LibClientLocal::SetDataLocation(const std::string& location) {
    return SendMsg(MSGTYPE_SET, MSG_DATALOCATION, location);
}

bool LibClientLocal::GetDataLocation(std::string& location) {
    bool sent = SendMsg(MSGTYPE_GET, MSG_DATALOCATION);
    location = Read(&LibProcessor::dataLocation);
    return sent;
}

bool LibClientLocal::SetServerThreaded(bool threaded) {
    return SendMsg(MSGTYPE_SET, MSG_SERVERTHREADED, threaded);
}

bool LibClientLocal::SetServerParallel(bool parallel) {
    return SendMsg(MSGTYPE_SET, MSG_SERVERPARALLEL, parallel);
}

bool LibClientLocal::UpdateOnline() {
    Log::log(1) << "LibClientLocal::UpdateOnline() - not implemented\n";
    return false;
}
