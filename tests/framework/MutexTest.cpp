#include <gtest/gtest.h>

#include <thread>

#include "framework/Mutex.h"

namespace {

// Whether another thread gets the lock (and gives it back at once if it did).
bool OtherThreadLocks(Mutex& mutex) {
    bool got = false;
    std::thread other([&] {
        got = mutex.Lock(true);
        if (got) mutex.Unlock();
    });
    other.join();
    return got;
}

}  // namespace

// The timed lock fails while another thread holds the mutex; the owner may lock again,
// copies share the lock, and only the owner unlocks.
TEST(Mutex, TimedLockFailsWhileAnotherThreadHolds) {
    Mutex mutex;
    Mutex copy = mutex;
    ASSERT_TRUE(mutex.Lock(true));
    EXPECT_TRUE(mutex.Lock(false));
    EXPECT_FALSE(OtherThreadLocks(mutex));
    EXPECT_FALSE(OtherThreadLocks(copy));
    bool strangerUnlocked = true;
    std::thread([&] { strangerUnlocked = mutex.Unlock(); }).join();
    EXPECT_FALSE(strangerUnlocked);

    EXPECT_TRUE(mutex.Unlock());
    EXPECT_FALSE(OtherThreadLocks(mutex));
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_TRUE(OtherThreadLocks(mutex));
    EXPECT_FALSE(mutex.Unlock());
}
