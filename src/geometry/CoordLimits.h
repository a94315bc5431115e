#pragma once

#include <type_traits>

#include "geometry/CoordQUICK.h"

// An axis-aligned box, a plain value: xMin, xMax, yMin, yMax, zMin, zMax, all 0 at first.
class CoordLimits {
public:
    // True when, on every axis, min - margin < p < max + margin (strictly).
    bool Contains(const CoordQUICK& p, double margin) const {
        return Within(p.data[0], xMin, xMax, margin) && Within(p.data[1], yMin, yMax, margin) &&
               Within(p.data[2], zMin, zMax, margin);
    }

    double xMin = 0.0;
    double xMax = 0.0;
    double yMin = 0.0;
    double yMax = 0.0;
    double zMin = 0.0;
    double zMax = 0.0;

private:
    static bool Within(double value, double low, double high, double margin) {
        return low - margin < value && value < high + margin;
    }
};

static_assert(std::is_trivially_copyable_v<CoordLimits>);
