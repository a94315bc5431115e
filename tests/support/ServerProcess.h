#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// A LibServerMain started for one test: its own free port and temporary working
// directory; stopped by its process id.
class ServerProcess {
public:
    ServerProcess() = default;
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    // Starts the server with `-p<port>` followed by `extraArgs`; waits until it listens.
    bool Start(const std::vector<std::string>& extraArgs = {});
    // Starts with exactly these arguments and does not wait for a listener.
    bool StartRaw(const std::vector<std::string>& args);
    // Waits up to `seconds` for the process to end; its exit code, or -1000 - signal, or
    // -2000 when it did not end in time.
    int WaitExit(double seconds);
    void Kill();
    bool Running() const { return pid > 0; }

    int port = 0;
    pid_t pid = -1;
    std::string directory;

    std::string ReadFile(const std::string& name) const;
    std::string Stdout() const { return ReadFile("stdout.txt"); }
    std::string Stderr() const { return ReadFile("stderr.txt"); }

    // A loopback port nobody listens on now.
    static int FreePort();
    // True while something listens on the loopback port.
    static bool PortListening(int port);
};
