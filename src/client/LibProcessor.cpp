#include "client/LibProcessor.h"

#include "logging/Log.h"

bool LibProcessor::ProcessMessage(ClientServerMessage& msg) {
    eMsgType type = MSGTYPE_NONE;
    eMsg code = MSG_NONE;
    msg.GetType(type);
    msg.GetMsg(code);
    switch (type) {
        case MSGTYPE_STATEUPDATE:
            ProcessStateUpdate(code);
            break;
        case MSGTYPE_GETREPLY:
            ProcessGetReply(code, msg);
            break;
        case MSGTYPE_STATUSREPLY:
            ProcessStatusReply(code);
            break;
        default:
            break;
    }
    return true;
}

void LibProcessor::ProcessStateUpdate(eMsg code) {
    switch (code) {
        case MSG_UPDATEIDLE:
            processing = false;
            break;
        case MSG_UPDATERUNNING:
            processing = true;
            break;
        case MSG_UPDATESUCCESS:
            processing = false;
            updateSuccessful = true;
            break;
        case MSG_UPDATEFAILED:
            processing = false;
            updateSuccessful = false;
            break;
        default:
            break;
    }
}

void LibProcessor::ProcessGetReply(eMsg code, ClientServerMessage& msg) {
    std::lock_guard<std::mutex> guard(stateLock);
    switch (code) {
        case MSG_VERSION:
            msg.GetMsg(libVersion);
            Log::log(4) << "server version = " << libVersion << "\n";
            break;
        case MSG_MATERIALNAMES:
            msg.GetMsg(materialNames);
            break;
        case MSG_MATERIALDESC:
            msg.GetMsg(materialDescriptions);
            break;
        case MSG_APNAMES:
            msg.GetMsg(apNames);
            break;
        case MSG_APDESC:
            msg.GetMsg(apDescriptions);
            break;
        case MSG_APDETAILS:
            apOptions.clear();
            msg.GetMsg(apOptions);
            break;
        case MSG_ANTNAMES:
            msg.GetMsg(antennaNames);
            break;
        case MSG_ANTDESC:
            msg.GetMsg(antennaDescriptions);
            break;
        case MSG_ANTDETAILS:
            antennaOptions.clear();
            msg.GetMsg(antennaOptions);
            break;
        case MSG_DATALOCATION:
            msg.GetMsg(dataLocation);
            break;
        case MSG_ERRORLOG:
            msg.GetMsg(errorList);
            break;
        case MSG_LASTERROR:
            msg.GetMsg(lastError);
            break;
        default:
            break;
    }
}

void LibProcessor::ProcessStatusReply(eMsg code) {
    const char* name = nullptr;
    switch (code) {
        case MSG_NOTINIT:
            name = "MSG_NOTINIT";
            break;
        case MSG_READY:
            name = "MSG_READY";
            break;
        case MSG_CALCULATING:
            name = "MSG_CALCULATING";
            break;
        case MSG_CALCSUCCESS:
            name = "MSG_CALCSUCCESS";
            break;
        case MSG_CALCFAILED:
            name = "MSG_CALCFAILED";
            break;
        case MSG_CALCERRORS:
            name = "MSG_CALCERRORS";
            break;
        default:
            return;
    }
    Log::log(3) << "LibClient::ProcessMessage() - status ... " << name << "\n";
}
