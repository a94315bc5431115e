#pragma once

#include <atomic>
#include <cstdint>

#include "framework/Lockable.h"

// An integer behind a lock, used as a flag and as a counter alike. Get() answers
// value > 0, so a negative count reads false.
class SharedValue : public Lockable {
public:
    explicit SharedValue(bool initial = false);

    bool Get();
    int32_t GetInt();
    void Set(bool flag);
    void Set(int value);
    void Inc(int amount = 1);
    void Dec(int amount = 1);
    // Stores without taking the lock; the one form safe inside a signal handler.
    void StoreFromSignal(int value);

private:
    std::atomic<int32_t> value;
};
