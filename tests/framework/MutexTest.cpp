#include <gtest/gtest.h>

#include <thread>

#include "framework/Mutex.h"

// The timed lock fails while another thread holds the mutex; the owner may lock again and
// must unlock as often; copies share the lock. Every unlock is made by the thread that holds
// the lock: releasing a mutex held by another thread, or not held at all, is undefined.
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

    EXPECT_TRUE(mutex.Unlock());
    EXPECT_FALSE(otherThreadLocks(mutex));
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_TRUE(otherThreadLocks(mutex));
    EXPECT_TRUE(otherThreadLocks(copy));
}
