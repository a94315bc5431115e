#pragma once

#include <pthread.h>

#include <memory>

// A plain, non-recursive lock used as a base class: a thread that locks twice stalls.
//
// Copies share one mutex, so after a = b both objects lock the same thing; the mutex
// lives as long as the last object that shares it.
class Lockable {
public:
    Lockable();
    Lockable(const Lockable& other) = default;
    Lockable& operator=(const Lockable& other) = default;
    virtual ~Lockable() = default;

    // With wait, blocks until the lock is got; without, tries once.
    bool lock(bool wait = true);
    bool unlock();
    // True while some thread holds the lock (tried, and released at once if got).
    bool isLocked();
    void waitForUnlock();

private:
    struct Handles {
        pthread_mutex_t mutex;
        pthread_mutexattr_t attributes;
        Handles();
        ~Handles();
    };
    std::shared_ptr<Handles> handles;
};
