#include "support/ServerProcess.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace {

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

}  // namespace

int ServerProcess::FreePort() {
    int probe = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = loopback(0);
    bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address));
    socklen_t size = sizeof(address);
    getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
    close(probe);
    return ntohs(address.sin_port);
}

// Binding the port fails while a server listens on it; nothing connects to the server.
bool ServerProcess::PortListening(int port) {
    int probe = socket(AF_INET, SOCK_STREAM, 0);
    int reuse = 1;
    setsockopt(probe, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof(reuse));
    sockaddr_in address = loopback(port);
    bool inUse = bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 &&
                 errno == EADDRINUSE;
    close(probe);
    return inUse;
}

ServerProcess::~ServerProcess() {
    Kill();
    if (!directory.empty()) std::filesystem::remove_all(directory);
}

bool ServerProcess::Start(const std::vector<std::string>& extraArgs) {
    port = FreePort();
    std::vector<std::string> args{"-p" + std::to_string(port)};
    args.insert(args.end(), extraArgs.begin(), extraArgs.end());
    if (!StartRaw(args)) return false;
    for (int turn = 0; turn < 500; ++turn) {
        if (PortListening(port)) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
}

bool ServerProcess::StartRaw(const std::vector<std::string>& args) {
    char pattern[] = "/tmp/fenwave-server-XXXXXX";
    if (mkdtemp(pattern) == nullptr) return false;
    directory = pattern;
    pid = fork();
    if (pid < 0) return false;
    if (pid == 0) {
        if (chdir(directory.c_str()) != 0) _exit(120);
        int out = open("stdout.txt", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        int err = open("stderr.txt", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        std::vector<char*> argv{const_cast<char*>(FENWAVE_SERVER_PATH)};
        for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
        argv.push_back(nullptr);
        execv(FENWAVE_SERVER_PATH, argv.data());
        _exit(121);
    }
    return true;
}

int ServerProcess::WaitExit(double seconds) {
    if (pid <= 0) return -2000;
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < deadline) {
        int status = 0;
        if (waitpid(pid, &status, WNOHANG) == pid) {
            pid = -1;
            if (WIFEXITED(status)) return WEXITSTATUS(status);
            return -1000 - WTERMSIG(status);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return -2000;
}

void ServerProcess::Kill() {
    if (pid <= 0) return;
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    pid = -1;
}

std::string ServerProcess::ReadFile(const std::string& name) const {
    std::ifstream file(directory + "/" + name, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}
