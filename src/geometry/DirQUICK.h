#pragma once

#include <type_traits>

#include "geometry/VectorQUICK.h"

template <typename X>
class MatrixTemplate;

// A direction of the trace: a VectorQUICK that keeps itself at unit length. Every
// constructor that takes values normalises, and so do Copy and SetValues.
class DirQUICK : public VectorQUICK {
public:
    // Dimension 4, all zero (not normalised: there is nothing to scale).
    DirQUICK() : VectorQUICK(4) { normalised = true; }
    DirQUICK(double x, double y, double z) : VectorQUICK(x, y, z) {
        normalised = true;
        Normalize();
    }

    using VectorQUICK::Copy;
    // The first three elements of the matrix, normalised.
    void Copy(MatrixTemplate<double>& matrix);

    // The unit vector from a to b.
    void CopyDiff(const VectorQUICK& a, const VectorQUICK& b) {
        SetValues(b.data[0] - a.data[0], b.data[1] - a.data[1], b.data[2] - a.data[2]);
    }
};

static_assert(std::is_trivially_copyable_v<DirQUICK>);
static_assert(sizeof(DirQUICK) == sizeof(VectorQUICK));
