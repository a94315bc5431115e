#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "support/TempDir.h"

// A LibServerMain started for one test in its own temporary working directory; stopped by
// its process id.
class ServerProcess {
public:
    ServerProcess() = default;
    ~ServerProcess() { Kill(); }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    // Starts the server on a free port with `-p<port>` then `extraArgs`; waits until it listens.
    bool Start(const std::vector<std::string>& extraArgs = {});
    // Starts with exactly these arguments and does not wait for a listener.
    bool StartRaw(const std::vector<std::string>& args);
    // Waits up to `seconds` for the process to end; its exit code, or -1000 - signal, or
    // -2000 when it did not end in time.
    int WaitExit(double seconds);
    void Kill();
    bool Running() const { return pid > 0; }
    std::string ReadFile(const std::string& name) const { return ::ReadFile(directory.File(name)); }
    std::string Stdout() const { return ReadFile("stdout.txt"); }
    std::string Stderr() const { return ReadFile("stderr.txt"); }

    // A loopback port nobody listens on now.
    static int FreePort();
    // True while something listens on the loopback port.
    static bool PortListening(int port);

    int port = 0;
    pid_t pid = -1;
    TempDir directory;
};
