#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "server/ClientServerMessage.h"
#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"

// What the server has told a client: its version, its catalogues, the state of a run.
// Replies are stored by the thread that reads the connection while the user's thread
// reads them, so the text and list fields are written under a lock and are best read
// through Read(&LibProcessor::field).
class LibProcessor {
  public:
    LibProcessor() = default;
    LibProcessor(const LibProcessor&) = delete;
    LibProcessor& operator=(const LibProcessor&) = delete;
    virtual ~LibProcessor() = default;

    // Stores what a state update or a reply tells; every message gives true.
    virtual bool ProcessMessage(ClientServerMessage& msg);

    // A copy of one field, taken under the lock that its writer holds.
    template <typename T>
    T Read(T LibProcessor::*field) const {
        std::lock_guard<std::mutex> guard(stateLock);
        return this->*field;
    }

    std::string libVersion;
    std::vector<std::string> materialNames;
    std::vector<std::string> materialDescriptions;
    std::vector<std::string> apNames;
    std::vector<std::string> apDescriptions;
    std::vector<AccessPointOption> apOptions;
    std::vector<std::string> antennaNames;
    std::vector<std::string> antennaDescriptions;
    std::vector<AntennaOption> antennaOptions;
    std::vector<std::string> errorList;
    std::string lastError;
    // The data location that the server last reported.
    std::string dataLocation;
    std::atomic<bool> processing{false};
    std::atomic<bool> updateSuccessful{false};
    std::atomic<bool> listenerRunning{false};

  private:
    void ProcessStateUpdate(eMsg code);
    void ProcessGetReply(eMsg code, ClientServerMessage& msg);
    void ProcessStatusReply(eMsg code);

    mutable std::mutex stateLock;
};
