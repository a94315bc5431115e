#include "geometry/CoordQUICK.h"

#include "geometry/MatrixTemplate.h"

namespace {

// The number of the matrix's elements that a fast vector takes: 3, or 4 when it has more.
int Components(MatrixTemplate<double>& matrix) {
    return matrix.GetDim(1) * matrix.GetDim(2) > 3 ? 4 : 3;
}

}  // namespace

void CoordQUICK::Copy(MatrixTemplate<double>& matrix) {
    SetValues(matrix.Get(0), matrix.Get(1), matrix.Get(2));
}

double CoordQUICK::diff(MatrixTemplate<double>& matrix) const {
    double sum = 0.0;
    for (int i = 0; i < Components(matrix); ++i) {
        const double d = data[i] - matrix.Get(i);
        sum += d * d;
    }
    return std::sqrt(sum);
}

double CoordQUICK::DotDiff(MatrixTemplate<double>& a, MatrixTemplate<double>& b) const {
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) sum += data[i] * (a.Get(i) - b.Get(i));
    return sum;
}

CoordQUICK& CoordQUICK::operator+=(MatrixTemplate<double>& matrix) {
    for (int i = 0; i < 3; ++i) data[i] += matrix.Get(i);
    return *this;
}

CoordQUICK& CoordQUICK::operator-=(MatrixTemplate<double>& matrix) {
    for (int i = 0; i < 3; ++i) data[i] -= matrix.Get(i);
    return *this;
}
