#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "client/LibClient.h"

// A client of a server on this machine, which it can start, connect to and stop. A server
// that this client started is known and stopped by its process id, never by its name.
class LibClientLocal : public LibClient {
public:
    LibClientLocal();
    ~LibClientLocal() override;

    // Text placed before and after the server's command line.
    void SetCommandStrings(const std::string& pre, const std::string& post);
    // The directory of the server program, with a trailing "/"; by default the directory
    // of the running program.
    void SetServerDirectory(const std::string& directory);
    // The process id of the server that this client started last, or -1.
    pid_t GetServerProcessId() const;

    // Starts "<directory>LibServerMain" with "-p<port> " when port is above 0 and
    // "-o<level> " when outputLevel is not negative, and waits up to a second for it.
    bool StartTheServerProcess(int port, int outputLevel);
    // Kills the server that this client started and waits for it to be gone.
    bool KillTheServerProcess();
    // For a server that this client started: whether it is still alive; otherwise
    // whether any process named LibServerMain runs.
    bool IsServerProcessRunning();
    // The names of all processes of the machine.
    bool ListProcessNames(std::vector<std::string>& names);
    // Runs `command` through the shell, which replaces itself by the command, so the
    // process id that it gives is the command's.
    bool RunCommand(const std::string& command);

    bool ConnectToServer(int port);
    bool StartCheckConnect(int port);
    // Asks the server to end and waits for it to close the connection.
    bool StopServer();
    // StopServer, and false while a server process still runs.
    bool StopCheckServer();

    bool SetDataLocation(const std::string& location);
    // Asks for the location; `location` gets the last one the server reported.
    bool GetDataLocation(std::string& location);
    bool SetServerThreaded(bool threaded);
    bool SetServerParallel(bool parallel);
    bool UpdateOnline();

private:
    // Polls IsServerProcessRunning until it answers `running` or `milliseconds` passed.
    bool WaitForServerState(bool running, int milliseconds);
    bool IsStartedServerRunning();
    static std::string ReadProcessName(const std::string& pid);

    std::string commandPre;
    std::string commandPost;
    std::string serverDirectory;
    std::string serverName = "LibServerMain";
    pid_t serverPid = -1;
};
