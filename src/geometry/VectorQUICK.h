#pragma once

#include <algorithm>
#include <cmath>
#include <type_traits>

// Radians to degrees as this system has always turned them: 180 / 3.1412459 and not
// 180 / pi. Every Angle of both vector families multiplies by it; conversions the other
// way use the true pi / 180, and the small mismatch between the two is kept on purpose.
inline constexpr double DEGREES_PER_RADIAN = 57.30210423832149;

// The plain vector of the trace's inner loops: four doubles, a dimension of 3 or 4 and a
// flag that marks a direction. No base class, no virtual operation, no heap: a value that
// is copied by its bytes. Dot products and lengths always take three components.
class VectorQUICK {
public:
    VectorQUICK() : data{0.0, 0.0, 0.0, 0.0}, dim(4), normalised(false) {}
    explicit VectorQUICK(int dimension)
        : data{0.0, 0.0, 0.0, 0.0}, dim(dimension), normalised(false) {}
    VectorQUICK(double x, double y, double z) : data{x, y, z, 0.0}, dim(3), normalised(false) {}

    // No bounds check.
    double& Get(int index) { return data[index]; }
    double Get(int index) const { return data[index]; }

    // Three components; the fourth is cleared. A direction is renormalised.
    void SetValues(double x, double y, double z) {
        data[0] = x;
        data[1] = y;
        data[2] = z;
        data[3] = 0.0;
        dim = 3;
        if (normalised) Normalize();
    }

    // Takes the other's components and dimension; a direction is renormalised.
    void Copy(const VectorQUICK& other) {
        for (int i = 0; i < 4; ++i) data[i] = other.data[i];
        dim = other.dim;
        if (normalised) Normalize();
    }

    double Dot(const VectorQUICK& v) const { return Dot(v.data[0], v.data[1], v.data[2]); }
    double Dot(double x, double y, double z) const {
        return data[0] * x + data[1] * y + data[2] * z;
    }
    double GetLength() const { return std::sqrt(Dot(*this)); }

    // Divides by the length without a test: a zero vector gets NaN components.
    void Normalize() {
        const double length = GetLength();
        data[0] /= length;
        data[1] /= length;
        data[2] /= length;
        if (dim == 4) data[3] /= length;
    }

    // Euclidean distance over 3 or 4 components as this vector's dim says; 0 otherwise.
    double diff(const VectorQUICK& v) const {
        if (dim != 3 && dim != 4) return 0.0;
        double sum = 0.0;
        for (int i = 0; i < dim; ++i) sum += (data[i] - v.data[i]) * (data[i] - v.data[i]);
        return std::sqrt(sum);
    }

    // The same point (or direction) within the system's tolerance of 0.01.
    bool equals(const VectorQUICK& v) const {
        return normalised == v.normalised && std::abs(dim - v.dim) < 0.01 && diff(v) < 0.01;
    }

    // Degrees between this vector and v, the cosine clamped to [-1, 1].
    double Angle(const VectorQUICK& v) const {
        const double cosine = Dot(v) / (GetLength() * v.GetLength());
        return std::acos(std::clamp(cosine, -1.0, 1.0)) * DEGREES_PER_RADIAN;
    }
    // Degrees between a and b; this vector plays no part.
    double Angle(const VectorQUICK& a, const VectorQUICK& b) const { return a.Angle(b); }
    // Degrees between this vector and a - b.
    double AngleDiff(const VectorQUICK& a, const VectorQUICK& b) const {
        return Angle(Difference(a, b));
    }

    // This . (a - b) over 3 or 4 components as dim says; 0 for any other dim.
    double DotDiff(const VectorQUICK& a, const VectorQUICK& b) const {
        if (dim != 3 && dim != 4) return 0.0;
        double sum = 0.0;
        for (int i = 0; i < dim; ++i) sum += data[i] * (a.data[i] - b.data[i]);
        return sum;
    }
    // (b - a) . (d - c), where this vector stands in the place of a: the first argument
    // only keeps the shape of the call.
    double DotDiff(const VectorQUICK& /*a*/, const VectorQUICK& b, const VectorQUICK& c,
                   const VectorQUICK& d) const {
        return Difference(b, *this).Dot(Difference(d, c));
    }

    // a x b over three components; the result has dim 3.
    void SetCross(const VectorQUICK& a, const VectorQUICK& b) {
        const double x = a.data[1] * b.data[2] - a.data[2] * b.data[1];
        const double y = a.data[2] * b.data[0] - a.data[0] * b.data[2];
        const double z = a.data[0] * b.data[1] - a.data[1] * b.data[0];
        data[0] = x;
        data[1] = y;
        data[2] = z;
        data[3] = 0.0;
        dim = 3;
    }
    // (b - a) x (c - a): the normal of the triangle a, b, c.
    void SetCross(const VectorQUICK& a, const VectorQUICK& b, const VectorQUICK& c) {
        SetCross(Difference(b, a), Difference(c, a));
    }

    // The scalar goes to three components, and to the fourth when dim is 4.
    VectorQUICK& operator+=(double const& s) {
        return Apply([s](double& x) { x += s; });
    }
    VectorQUICK& operator-=(double const& s) {
        return Apply([s](double& x) { x -= s; });
    }
    VectorQUICK& operator*=(double const& s) {
        return Apply([s](double& x) { x *= s; });
    }

    double data[4];
    int dim;
    bool normalised;

protected:
    // a - b over all four components, with a's dimension; never a direction.
    static VectorQUICK Difference(const VectorQUICK& a, const VectorQUICK& b) {
        VectorQUICK result(a.dim);
        for (int i = 0; i < 4; ++i) result.data[i] = a.data[i] - b.data[i];
        return result;
    }

    template <typename Operation>
    VectorQUICK& Apply(Operation operation) {
        const int count = dim == 4 ? 4 : 3;
        for (int i = 0; i < count; ++i) operation(data[i]);
        return *this;
    }
};

static_assert(std::is_trivially_copyable_v<VectorQUICK>);
static_assert(!std::is_polymorphic_v<VectorQUICK>);
