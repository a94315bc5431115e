#pragma once

#include <chrono>
#include <thread>

// Polls `condition` until it holds, giving up after a generous limit.
template <typename Condition>
bool WaitUntil(Condition condition, double seconds = 5) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}
