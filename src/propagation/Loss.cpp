#include "propagation/Loss.h"

#include <cmath>

void Loss::ToDB() {
    for (int i = 0; i < 3; ++i) {
        const double magnitude = std::abs(value[i]);
        dB[i] = magnitude > 0.0 ? 10.0 * std::log10(magnitude) : -120.0;
    }
}

void Loss::FromDB() {
    for (int i = 0; i < 3; ++i) value[i] = 0.1 * std::pow(10.0, dB[i]);
}

Loss& Loss::operator+=(Loss const& other) {
    for (int i = 0; i < 3; ++i) dB[i] += other.dB[i];
    FromDB();
    return *this;
}

Loss& Loss::operator+=(double const& dBChange) {
    for (int i = 0; i < 3; ++i) dB[i] += dBChange;
    FromDB();
    return *this;
}
