#pragma once

#include <type_traits>

// The effect of a face or a stretch of material on a ray: three linear factors and the same
// three in dB. Indices 0 and 1 are the two polarisations; index 2 is what a reflected ray
// takes. A plain value for the per-ray loss arithmetic.
class Loss {
public:
    // Each dB from the magnitude of its factor: 10 log10 |value|, -120 for a zero factor.
    void ToDB();
    // Each factor from its dB as 0.1 times 10 to the power dB.
    void FromDB();
    // Adds the three dB values, then refreshes the factors.
    Loss& operator+=(Loss const& other);
    // Adds the number to all three dB values, then refreshes the factors.
    Loss& operator+=(double const& dBChange);

    double value[3] = {1.0, 1.0, 1.0};
    double dB[3] = {0.0, 0.0, 0.0};
};

static_assert(!std::is_polymorphic_v<Loss>);
