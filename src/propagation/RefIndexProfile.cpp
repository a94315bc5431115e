#include "propagation/RefIndexProfile.h"

#include <cmath>

namespace {

// Below this a distance counts as zero: on the axis, or at the peak of the bell.
constexpr double TINY = 1e-10;

}  // namespace

bool RefIndexProfile::At(double a, double& n, double& slope) const {
    if (shape == PV_REFINDEX_FLAT) {
        n = (indexMin + indexMax) / 2.0;
        slope = 0.0;
        return true;
    }
    if (radius < TINY) return false;
    switch (shape) {
        case PV_REFINDEX_CONE:
            slope = (indexMin - indexMax) / radius;
            n = a < TINY ? indexMax : indexMax + a * slope;
            return true;
        case PV_REFINDEX_GAUSSIAN:
            return Gaussian(a, n, slope);
        case PV_REFINDEX_POWERLAW:
            return PowerLaw(a, n, slope);
        default:
            return false;
    }
}

bool RefIndexProfile::Gaussian(double a, double& n, double& slope) const {
    const double contrast = indexMax - indexMin;
    const double u = (a - peakOffset) / radius;
    const double magnitude = std::abs(u);
    const double bell = std::exp(-std::pow(magnitude, exponent));
    n = indexMin + contrast * bell;
    // The peak is flat for p over 1; for smaller p its slope has no value, so 0 is taken.
    if (magnitude < TINY) {
        slope = 0.0;
        return true;
    }
    const double fall = contrast * exponent / radius * std::pow(magnitude, exponent - 1.0) * bell;
    slope = u > 0.0 ? -fall : fall;
    return true;
}

bool RefIndexProfile::PowerLaw(double a, double& n, double& slope) const {
    const double contrast = indexMax - indexMin;
    const double x = a / radius;
    if (x >= 1.0) {
        n = indexMin;
        slope = 0.0;
        return true;
    }
    n = indexMax - contrast * std::pow(x, exponent);
    // On the axis the slope has no value for p under 1; 0 is taken there.
    const bool undefined = x < TINY && exponent < 1.0;
    slope = undefined ? 0.0 : -contrast * exponent / radius * std::pow(x, exponent - 1.0);
    return true;
}
