#pragma once

#include <time.h>

#include <cerrno>

// A sleep of microsecond grain; resumes after a signal until the whole time has passed.
inline void USLEEP(int microseconds) {
    if (microseconds <= 0) return;
    timespec remaining{microseconds / 1000000, (microseconds % 1000000) * 1000L};
    while (nanosleep(&remaining, &remaining) == -1 && errno == EINTR) {
    }
}
