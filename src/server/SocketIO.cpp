#include "server/SocketIO.h"

#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "framework/Usleep.h"
#include "logging/Log.h"
#include "server/WinSockError.h"

namespace {

// Long texts log each turn of their send or receive loop.
constexpr int progressThreshold = 500;

void LogProgress(const char* word, int64_t count, int64_t length) {
    Log::log(4) << word << count << " remaining " << length - count << " total " << length << "\n";
}

bool SendFailed(const char* text) {
    Log::log(1) << text;
    LogWinError();
    return false;
}

}  // namespace

bool socketReceive(int socket, char* buffer, int length) {
    return socketReceive(socket, buffer, length, nullptr);
}

bool socketReceive(int socket, char* buffer, int length, bool* peerClosed) {
    if (peerClosed != nullptr) *peerClosed = false;
    ssize_t peeked = recv(socket, buffer, length, MSG_PEEK);
    if (peeked <= 0) {
        // On a stream socket a peek of 0 is the end of the stream, not silence.
        if (peeked == 0 && length > 0 && peerClosed != nullptr) *peerClosed = true;
        return false;
    }
    int remaining = length;
    int waitCount = 0;
    while (remaining > 0 && waitCount < 1000) {
        ssize_t got = recv(socket, buffer + (length - remaining), remaining, MSG_WAITALL);
        if (got == -1) break;
        if (got == 0) {
            USLEEP(1000);
            waitCount += 2;
            continue;
        }
        remaining -= static_cast<int>(got);
    }
    // Data was there but did not all come: the stream can no longer be read in step.
    if (remaining > 0 && peerClosed != nullptr) *peerClosed = true;
    return remaining == 0;
}

void LogWinError() {
    int errnoValue = errno;
    const WinSockError* error = FindWinSockError(errnoValue);
    if (error == nullptr) {
        Log::log(1) << "error unknown\n";
        return;
    }
    Log::log(1) << "error = " << error->name << ", (" << error->code << ")\n";
    Log::log(1) << "desc1: " << error->desc1 << "\n";
    Log::log(1) << "desc2:     " << error->desc2 << "\n";
}

bool SendFrame(int socket, const char* text, const SendReport& report) {
    int32_t length = static_cast<int32_t>(strlen(text));
    if (send(socket, &length, sizeof(length), MSG_NOSIGNAL) != sizeof(length)) {
        return SendFailed(report.firstFailed);
    }
    bool logProgress = report.logProgress && length > progressThreshold;
    int32_t sent = 0;
    while (sent < length) {
        ssize_t count = send(socket, text + sent, length - sent, MSG_NOSIGNAL);
        if (count == -1) return SendFailed(report.secondFailed);
        sent += static_cast<int32_t>(count);
        if (logProgress) LogProgress("Sent ", sent, length);
    }
    return true;
}

FrameStatus ReceiveFrame(int socket, std::string& text, bool logProgress) {
    int32_t length = 0;
    bool peerClosed = false;
    if (!socketReceive(socket, reinterpret_cast<char*>(&length), sizeof(length), &peerClosed)) {
        return peerClosed ? FrameStatus::closed : FrameStatus::nothing;
    }
    if (length <= 0) return FrameStatus::empty;
    if (length > maxFrameLength) {
        Log::log(1) << "message length " << length
                    << " exceeds the limit, closing the connection\n";
        return FrameStatus::broken;
    }
    text.assign(length, '\0');
    logProgress = logProgress && length > progressThreshold;
    int32_t count = 0;
    while (count < length) {
        ssize_t got = recv(socket, text.data() + count, length - count, 0);
        if (got == -1) {
            Log::log(1) << "second recv(int sockId, ClientServerMessage& msg) failed in "
                           "ReceiveMessage() \n";
            LogWinError();
            break;
        }
        if (got == 0) break;
        count += static_cast<int32_t>(got);
        if (logProgress) {
            LogProgress("received ", count, length);
            Log::Flush();
        }
    }
    if (count < length) {
        text.clear();
        return FrameStatus::broken;
    }
    return FrameStatus::received;
}
