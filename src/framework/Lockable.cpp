#include "framework/Lockable.h"

Lockable::Handles::Handles() {
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_NORMAL);
    pthread_mutex_init(&mutex, &attributes);
}

Lockable::Handles::~Handles() {
    pthread_mutex_destroy(&mutex);
    pthread_mutexattr_destroy(&attributes);
}

Lockable::Lockable() : handles(std::make_shared<Handles>()) {}

bool Lockable::lock(bool wait) {
    if (wait) return pthread_mutex_lock(&handles->mutex) == 0;
    return pthread_mutex_trylock(&handles->mutex) == 0;
}

bool Lockable::unlock() { return pthread_mutex_unlock(&handles->mutex) == 0; }

bool Lockable::isLocked() {
    if (!lock(false)) return true;
    unlock();
    return false;
}

void Lockable::waitForUnlock() {
    lock(true);
    unlock();
}
