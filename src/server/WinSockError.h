#pragma once

// A Windows Sockets error as the logs name it: its number, its name and Microsoft's short
// and long wording. The logs of this system use these names for socket errors, so a
// Linux errno is reported as its Windows Sockets counterpart.
struct WinSockError {
    int code;
    const char* name;
    const char* desc1;
    const char* desc2;
};

// The counterpart of a Linux errno, or null for an errno without one, such as 0, EAGAIN
// (which a receive time-out gives) and ETIMEDOUT.
const WinSockError* FindWinSockError(int errnoValue);
