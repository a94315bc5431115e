#pragma once

#include <type_traits>

#include "geometry/VectorQUICK.h"

template <typename X>
class MatrixTemplate;

// A position of the trace: VectorQUICK with the arithmetic of points. Adds no field and
// stays a plain value.
class CoordQUICK : public VectorQUICK {
public:
    // Dimension 4, all zero.
    CoordQUICK() : VectorQUICK(4) {}
    CoordQUICK(double x, double y, double z) : VectorQUICK(x, y, z) {}

    using VectorQUICK::Copy;
    // The first three elements of the matrix; dimension 3.
    void Copy(MatrixTemplate<double>& matrix);

    using VectorQUICK::diff;
    // Distance to c, over a fourth component when c has one.
    double diff(const CoordQUICK& c) const {
        const int count = c.dim == 4 ? 4 : 3;
        double sum = 0.0;
        for (int i = 0; i < count; ++i) sum += (data[i] - c.data[i]) * (data[i] - c.data[i]);
        return std::sqrt(sum);
    }
    // Distance to the matrix's elements, over a fourth element when it has one.
    double diff(MatrixTemplate<double>& matrix) const;

    // this += s * v over three components.
    void PlusProd(const VectorQUICK& v, double s) {
        data[0] += s * v.data[0];
        data[1] += s * v.data[1];
        data[2] += s * v.data[2];
    }

    using VectorQUICK::DotDiff;
    // This . (a - b) over the first three elements of two matrices.
    double DotDiff(MatrixTemplate<double>& a, MatrixTemplate<double>& b) const;

    CoordQUICK& operator+=(const VectorQUICK& v) {
        PlusProd(v, 1.0);
        return *this;
    }
    CoordQUICK& operator-=(const VectorQUICK& v) {
        PlusProd(v, -1.0);
        return *this;
    }
    CoordQUICK& operator+=(MatrixTemplate<double>& matrix);
    CoordQUICK& operator-=(MatrixTemplate<double>& matrix);
    CoordQUICK& operator*=(double const& s) {
        VectorQUICK::operator*=(s);
        return *this;
    }
};

static_assert(std::is_trivially_copyable_v<CoordQUICK>);
static_assert(sizeof(CoordQUICK) == sizeof(VectorQUICK));
