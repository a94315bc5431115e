#include <gtest/gtest.h>

#include <thread>

#include "framework/Mutex.h"

// The timed lock fails while another thread holds the mutex; the owner may lock again and
// must unlock as often; copies share the lock; only the owner unlocks.
TEST(Mutex, TimedLockFailsWhileAnotherThreadHolds) {
    Mutex mutex;
    Mutex copy = mutex;
    auto otherThreadLocks = [](Mutex& which) {
        bool got = false;
        std::thread([&] { got = which.Lock(true) && which.Unlock(); }).join();
        return got;
    };
    ASSERT_TRUE(mutex.Lock(true));
    EXPECT_TRUE(mutex.Lock(false));
    EXPECT_FALSE(otherThreadLocks(mutex));
    EXPECT_FALSE(otherThreadLocks(copy));
    bool strangerUnlocked = true;
    std::thread([&] { strangerUnlocked = mutex.Unlock(); }).join();
    EXPECT_FALSE(strangerUnlocked);

    EXPECT_TRUE(mutex.Unlock());
    EXPECT_FALSE(otherThreadLocks(mutex));
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_TRUE(otherThreadLocks(mutex));
    EXPECT_FALSE(mutex.Unlock());
}
