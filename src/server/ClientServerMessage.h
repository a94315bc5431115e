#pragma once

#include <string>
#include <vector>

#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"
#include "system/SystemRecords.h"

// The kind of a message: the attribute "type" of its XML text.
enum eMsgType : int {
    MSGTYPE_NONE = 0,
    MSGTYPE_CONTROL = 1,
    MSGTYPE_STATEUPDATE = 2,
    MSGTYPE_SET = 3,
    MSGTYPE_SETREPLY = 4,
    MSGTYPE_GET = 5,
    MSGTYPE_GETREPLY = 6,
    MSGTYPE_STATUSQUERY = 7,
    MSGTYPE_STATUSREPLY = 8,
    MSGTYPE_ERROR = 9,
};

// What a message is about: the attribute "msg" of its XML text.
enum eMsg : int {
    MSG_NONE = 0,
    MSG_DISCONNECT = 2,
    MSG_BOUNCESYSTEM = 3,
    MSG_PROCESSSYSTEM = 4,
    MSG_STOPPROCESSING = 5,
    MSG_SYSTEMRESULT = 6,
    MSG_SHUTDOWN = 9,
    MSG_UPDATEIDLE = 11,
    MSG_UPDATERUNNING = 12,
    MSG_UPDATESUCCESS = 13,
    MSG_UPDATEFAILED = 14,
    MSG_VERSION = 15,
    MSG_MATERIALNAMES = 17,
    MSG_MATERIALDESC = 18,
    MSG_APNAMES = 19,
    MSG_APDESC = 20,
    MSG_APDETAILS = 21,
    MSG_ANTNAMES = 22,
    MSG_ANTDESC = 23,
    MSG_ANTDETAILS = 24,
    MSG_DATALOCATION = 26,
    MSG_SERVERTHREADED = 27,
    MSG_SERVERPARALLEL = 28,
    MSG_ERRORLOG = 29,
    MSG_LASTERROR = 30,
    MSG_NOTINIT = 31,
    MSG_READY = 32,
    MSG_CALCULATING = 33,
    MSG_CALCSUCCESS = 34,
    MSG_CALCFAILED = 35,
    MSG_CALCERRORS = 36,
};

// One message between a client and the server, and its XML text with the root
// "libFenwaveMessage". The message owns the system it holds: replacing, resetting or
// destroying the message releases it through DeleteSystem (which leaves a held record
// alone), and GetMsg(e_System_**) hands it over to the caller.
class ClientServerMessage {
public:
    ClientServerMessage() = default;
    virtual ~ClientServerMessage();
    ClientServerMessage(const ClientServerMessage&) = delete;
    ClientServerMessage& operator=(const ClientServerMessage&) = delete;

    void Reset();

    void SetType(eMsgType newType);
    void SetMsg(eMsg newMsg);
    void SetMsg(const std::string& text);
    // Without this a string literal would pick the bool overload.
    void SetMsg(const char* text);
    void SetMsg(bool value);
    void SetMsg(const std::vector<std::string>& list);
    void SetMsg(const std::vector<AccessPointOption>& options);
    void SetMsg(const std::vector<AntennaOption>& options);
    void SetMsg(e_System_* newSystem);

    bool GetType(eMsgType& out) const;
    bool GetMsg(eMsg& out) const;
    bool GetMsg(std::string& out) const;
    // Only the exact words "true" and "false" count; anything else leaves `out` alone.
    bool GetMsg(bool& out) const;
    bool GetMsg(std::vector<std::string>& out) const;
    // Appends one option for each list entry; false if an entry did not parse.
    bool GetMsg(std::vector<AccessPointOption>& out) const;
    bool GetMsg(std::vector<AntennaOption>& out) const;
    // Hands the system over: the caller owns it, the message holds none any more.
    bool GetMsg(e_System_** out);

    bool TestType(const eMsgType& value) const;
    bool TestMsg(const eMsg& value) const;
    bool TestMsg(const std::string& value) const;

    bool ToString(std::string& text) const;
    bool FromString(std::string& text);
    bool FromString(const char* text);

    void PrintString(int level, const std::string& prefix = "") const;
    void PrintStrings(int level, const std::string& prefix = "") const;

private:
    void ReleaseSystem();
    template <typename Option>
    void SetOptions(const std::vector<Option>& options);
    template <typename Option>
    bool GetOptions(std::vector<Option>& out) const;

    eMsgType type = MSGTYPE_NONE;
    eMsg msg = MSG_NONE;
    std::string string;
    std::vector<std::string> stringList;
    e_System_* system = nullptr;
};
