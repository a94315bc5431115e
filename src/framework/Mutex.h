#pragma once

#include <pthread.h>

#include <memory>

// A recursive system mutex whose lock waits at most 10 milliseconds. Copies share one
// mutex, which lives as long as the last object that holds it.
class Mutex {
public:
    Mutex();
    virtual ~Mutex() = default;

    // Waits at most 10 ms, whatever the argument says; true only if the lock was got,
    // so a caller must test the result.
    bool Lock(bool wait = true);
    // True when the calling thread held the lock and released it.
    bool Unlock();

private:
    struct Handle {
        pthread_mutex_t mutex;
        Handle();
        ~Handle();
    };
    std::shared_ptr<Handle> handle;
};
