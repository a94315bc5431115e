#include "framework/SharedValue.h"

SharedValue::SharedValue(bool initial) : value(initial ? 1 : 0) {}

bool SharedValue::Get() { return GetInt() > 0; }

int32_t SharedValue::GetInt() {
    lock(true);
    int32_t current = value.load();
    unlock();
    return current;
}

void SharedValue::Set(bool flag) { Set(flag ? 1 : 0); }

void SharedValue::Set(int newValue) {
    lock(true);
    value.store(newValue);
    unlock();
}

void SharedValue::Inc(int amount) {
    lock(true);
    value.store(value.load() + amount);
    unlock();
}

void SharedValue::Dec(int amount) { Inc(-amount); }

void SharedValue::StoreFromSignal(int newValue) { value.store(newValue); }
