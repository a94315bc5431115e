#include "geometry/MathHack.h"

#include <cmath>

namespace {

// pi / 3: the spacing of the three real roots of a cubic in the trigonometric form.
constexpr double THIRD_OF_PI = 1.0471975511965976;

// u, a square term of the quartic's resolvent: 0 when it is zero within the tolerance, its
// root when positive. False when it is negative: the quartic then has no real root.
bool RootOrZero(double& u) {
    if (MATHHACK_isZero(u)) {
        u = 0.0;
        return true;
    }
    if (u < 0.0) return false;
    u = std::sqrt(u);
    return true;
}

}  // namespace

bool MATHHACK_isZero(double x) { return x > -1e-9 && x < 1e-9; }

int MATHHACK_solveLinear(const double c[2], double s[2]) {
    if (MATHHACK_isZero(c[1])) return 0;
    s[0] = -c[0] / c[1];
    return 1;
}

int MATHHACK_solveQuadric(const double c[3], double s[2]) {
    if (MATHHACK_isZero(c[2])) return MATHHACK_solveLinear(c, s);
    // x^2 + 2 p x + q = 0
    const double p = c[1] / (2.0 * c[2]);
    const double q = c[0] / c[2];
    const double d = p * p - q;
    if (MATHHACK_isZero(d)) {
        s[0] = s[1] = -p;
        return 1;
    }
    if (d < 0.0) return 0;
    const double root = std::sqrt(d);
    s[0] = root - p;
    s[1] = -root - p;
    return 2;
}

int MATHHACK_solveCubic(const double c[4], double s[3]) {
    // x^3 + A x^2 + B x + C = 0, shifted by x = y - A/3 to y^3 + 3 p y + 2 q = 0.
    const double a = c[2] / c[3];
    const double b = c[1] / c[3];
    const double cc = c[0] / c[3];
    const double sq = a * a;
    const double p = 0.3333333333333333 * (-0.3333333333333333 * sq + b);
    const double q = 0.5 * (0.07407407407407407 * a * sq - 0.3333333333333333 * a * b + cc);
    const double cb = p * p * p;
    const double d = q * q + cb;

    int count;
    if (MATHHACK_isZero(d)) {
        if (MATHHACK_isZero(q)) {
            s[0] = 0.0;
            count = 1;
        } else {
            const double u = std::cbrt(-q);
            s[0] = 2.0 * u;
            s[1] = -u;
            count = 2;
        }
    } else if (d < 0.0) {
        // Three real roots.
        const double phi = 0.3333333333333333 * std::acos(-q / std::sqrt(-cb));
        const double t = 2.0 * std::sqrt(-p);
        s[0] = t * std::cos(phi);
        s[1] = -t * std::cos(phi + THIRD_OF_PI);
        s[2] = -t * std::cos(phi - THIRD_OF_PI);
        count = 3;
    } else {
        // One real root, in the form that avoids cancelling terms.
        const double u = std::cbrt(std::sqrt(d) + std::abs(q));
        s[0] = q > 0.0 ? p / u - u : u - p / u;
        count = 1;
    }

    const double shift = 0.3333333333333333 * a;
    for (int i = 0; i < count; ++i) s[i] -= shift;
    return count;
}

int MATHHACK_solveQuartic(const double c[5], double s[4]) {
    // x^4 + A x^3 + B x^2 + C x + D = 0, shifted by x = y - A/4 to y^4 + p y^2 + q y + r.
    const double a = c[3] / c[4];
    const double b = c[2] / c[4];
    const double cc = c[1] / c[4];
    const double dd = c[0] / c[4];
    const double sq = a * a;
    const double p = -0.375 * sq + b;
    const double q = 0.125 * sq * a - 0.5 * a * b + cc;
    const double r = -0.01171875 * sq * sq + 0.0625 * sq * b - 0.25 * a * cc + dd;

    int count;
    if (MATHHACK_isZero(r)) {
        // No constant term: y (y^3 + p y + q) = 0.
        const double cubic[4] = {q, p, 0.0, 1.0};
        count = MATHHACK_solveCubic(cubic, s);
        s[count++] = 0.0;
    } else {
        // One root z of the resolvent cubic splits the quartic into two quadrics.
        const double resolvent[4] = {0.5 * r * p - 0.125 * q * q, -r, -0.5 * p, 1.0};
        MATHHACK_solveCubic(resolvent, s);
        const double z = s[0];
        double u = z * z - r;
        double v = 2.0 * z - p;
        if (!RootOrZero(u) || !RootOrZero(v)) return 0;

        const double first[3] = {z - u, q < 0.0 ? -v : v, 1.0};
        count = MATHHACK_solveQuadric(first, s);
        const double second[3] = {z + u, q < 0.0 ? v : -v, 1.0};
        count += MATHHACK_solveQuadric(second, s + count);
    }

    const double shift = 0.25 * a;
    for (int i = 0; i < count; ++i) s[i] -= shift;
    return count;
}
