#include "framework/Mutex.h"

#include <time.h>

namespace {

constexpr long lockWaitNanoseconds = 10L * 1000 * 1000;
constexpr long nanosecondsPerSecond = 1000L * 1000 * 1000;

timespec DeadlineFromNow(long nanoseconds) {
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_nsec += nanoseconds;
    deadline.tv_sec += deadline.tv_nsec / nanosecondsPerSecond;
    deadline.tv_nsec %= nanosecondsPerSecond;
    return deadline;
}

}  // namespace

Mutex::Handle::Handle() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

Mutex::Handle::~Handle() { pthread_mutex_destroy(&mutex); }

Mutex::Mutex() : handle(std::make_shared<Handle>()) {}

bool Mutex::Lock(bool) {
    timespec deadline = DeadlineFromNow(lockWaitNanoseconds);
    return pthread_mutex_timedlock(&handle->mutex, &deadline) == 0;
}

bool Mutex::Unlock() { return pthread_mutex_unlock(&handle->mutex) == 0; }
