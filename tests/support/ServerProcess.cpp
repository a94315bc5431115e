#include "support/ServerProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "support/RawClient.h"
#include "support/WaitUntil.h"

int ServerProcess::FreePort() {
    int probe = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = Loopback(0);
    socklen_t size = sizeof(address);
    bind(probe, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
    close(probe);
    return ntohs(address.sin_port);
}

// Binding the port fails while a server listens on it; nothing connects to the server.
bool ServerProcess::PortListening(int port) {
    int probe = socket(AF_INET, SOCK_STREAM, 0);
    int reuse = 1;
    setsockopt(probe, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof(reuse));
    sockaddr_in address = Loopback(port);
    bool inUse = bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 &&
                 errno == EADDRINUSE;
    close(probe);
    return inUse;
}

bool ServerProcess::Start(const std::vector<std::string>& extraArgs) {
    port = FreePort();
    std::vector<std::string> args{"-p" + std::to_string(port)};
    args.insert(args.end(), extraArgs.begin(), extraArgs.end());
    return StartRaw(args) && WaitUntil([this] { return PortListening(port); }, 10);
}

bool ServerProcess::StartRaw(const std::vector<std::string>& args) {
    // Everything the child needs is made before the fork: it only changes directory,
    // redirects its output and runs the server.
    std::vector<char*> argv{const_cast<char*>(FENWAVE_SERVER_PATH)};
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    pid = fork();
    if (pid != 0) return pid > 0;
    if (chdir(directory.path.c_str()) != 0) _exit(120);
    dup2(open("stdout.txt", O_WRONLY | O_CREAT | O_TRUNC, 0644), STDOUT_FILENO);
    dup2(open("stderr.txt", O_WRONLY | O_CREAT | O_TRUNC, 0644), STDERR_FILENO);
    execv(FENWAVE_SERVER_PATH, argv.data());
    _exit(121);
}

int ServerProcess::WaitExit(double seconds) {
    int status = 0;
    if (pid <= 0 || !WaitUntil([&] { return waitpid(pid, &status, WNOHANG) == pid; }, seconds)) {
        return -2000;
    }
    pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1000 - WTERMSIG(status);
}

void ServerProcess::Kill() {
    if (pid <= 0) return;
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    pid = -1;
}
