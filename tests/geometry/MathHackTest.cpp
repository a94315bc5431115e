#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "geometry/MathHack.h"

namespace {

// c[0] + c[1] x + ... + c[degree] x^degree.
double Evaluate(const std::vector<double>& c, double x) {
    double value = 0.0;
    for (auto it = c.rbegin(); it != c.rend(); ++it) value = value * x + *it;
    return value;
}

// Coefficients of lead * (x - r0)(x - r1)..., constant term first.
std::vector<double> FromRoots(const std::vector<double>& roots, double lead) {
    std::vector<double> c{lead};
    for (double r : roots) {
        std::vector<double> next(c.size() + 1, 0.0);
        for (size_t i = 0; i < c.size(); ++i) {
            next[i + 1] += c[i];
            next[i] -= r * c[i];
        }
        c = next;
    }
    return c;
}

int Solve(const std::vector<double>& c, double* s) {
    switch (c.size()) {
        case 2:
            return MATHHACK_solveLinear(c.data(), s);
        case 3:
            return MATHHACK_solveQuadric(c.data(), s);
        case 4:
            return MATHHACK_solveCubic(c.data(), s);
        default:
            return MATHHACK_solveQuartic(c.data(), s);
    }
}

// Every root found satisfies the polynomial, and each expected root is among them.
void ExpectRoots(const std::vector<double>& roots, double lead) {
    const std::vector<double> c = FromRoots(roots, lead);
    double s[4] = {0, 0, 0, 0};
    const int count = Solve(c, s);
    ASSERT_GE(count, 1);
    double scale = 0.0;
    for (double v : c) scale = std::max(scale, std::abs(v));
    for (int i = 0; i < count; ++i) EXPECT_NEAR(Evaluate(c, s[i]) / scale, 0.0, 1e-7) << s[i];
    for (double r : roots) {
        double nearest = 1e300;
        for (int i = 0; i < count; ++i) nearest = std::min(nearest, std::abs(s[i] - r));
        EXPECT_LT(nearest, 1e-4) << "root " << r << " degree " << roots.size();
    }
}

}  // namespace

TEST(MathHack, ZeroToleranceIsStrict) {
    EXPECT_TRUE(MATHHACK_isZero(0.0));
    EXPECT_TRUE(MATHHACK_isZero(-9.9e-10));
    EXPECT_FALSE(MATHHACK_isZero(1e-9));
    EXPECT_FALSE(MATHHACK_isZero(-1e-9));
}

TEST(MathHack, LowDegreeEdgeCases) {
    double s[4];
    const double flat[2] = {3.0, 0.0};
    EXPECT_EQ(MATHHACK_solveLinear(flat, s), 0);
    const double line[2] = {3.0, -2.0};
    ASSERT_EQ(MATHHACK_solveLinear(line, s), 1);
    EXPECT_DOUBLE_EQ(s[0], 1.5);

    // A vanishing square term falls to the linear case.
    const double degenerate[3] = {4.0, 2.0, 0.0};
    ASSERT_EQ(MATHHACK_solveQuadric(degenerate, s), 1);
    EXPECT_DOUBLE_EQ(s[0], -2.0);
    // A double root is stored twice and counted once.
    const double square[3] = {9.0, -6.0, 1.0};
    s[0] = s[1] = 0;
    ASSERT_EQ(MATHHACK_solveQuadric(square, s), 1);
    EXPECT_DOUBLE_EQ(s[0], 3.0);
    EXPECT_DOUBLE_EQ(s[1], 3.0);
    const double none[3] = {1.0, 0.0, 1.0};
    EXPECT_EQ(MATHHACK_solveQuadric(none, s), 0);

    // x^3 = 0: one root 0; (x - 1)^2 (x + 2): two roots.
    const double cube[4] = {0.0, 0.0, 0.0, 2.0};
    ASSERT_EQ(MATHHACK_solveCubic(cube, s), 1);
    EXPECT_NEAR(s[0], 0.0, 1e-12);
    const std::vector<double> doubled = FromRoots({1.0, 1.0, -2.0}, 1.0);
    ASSERT_EQ(MATHHACK_solveCubic(doubled.data(), s), 2);
    EXPECT_NEAR(std::min(s[0], s[1]), -2.0, 1e-9);
    EXPECT_NEAR(std::max(s[0], s[1]), 1.0, 1e-9);

    // x^4 + 1 has no real root; x^4 - x (no constant term) has 0 and 1.
    const double noReal[5] = {1.0, 0.0, 0.0, 0.0, 1.0};
    EXPECT_EQ(MATHHACK_solveQuartic(noReal, s), 0);
    const double zeroConstant[5] = {0.0, -1.0, 0.0, 0.0, 1.0};
    const int count = MATHHACK_solveQuartic(zeroConstant, s);
    ASSERT_EQ(count, 2);
    EXPECT_NEAR(std::min(s[0], s[1]), 0.0, 1e-9);
    EXPECT_NEAR(std::max(s[0], s[1]), 1.0, 1e-9);
}

TEST(MathHack, RandomRootsAreFoundAndSatisfyThePolynomial) {
    std::mt19937 generator(7);
    std::uniform_real_distribution<double> value(-5.0, 5.0);
    std::uniform_real_distribution<double> lead(0.5, 3.0);
    for (int degree = 1; degree <= 4; ++degree) {
        for (int trial = 0; trial < 50; ++trial) {
            std::vector<double> roots;
            // Distinct roots, at least 0.2 apart, so that each one is well conditioned.
            while (static_cast<int>(roots.size()) < degree) {
                const double r = value(generator);
                bool apart = true;
                for (double other : roots) apart = apart && std::abs(other - r) > 0.2;
                if (apart) roots.push_back(r);
            }
            ExpectRoots(roots, trial % 2 == 0 ? lead(generator) : -lead(generator));
        }
    }
    // A cubic with one real root and a complex pair: (x - 2)(x^2 + 1).
    const std::vector<double> c = {-2.0, 1.0, -2.0, 1.0};
    double s[3];
    ASSERT_EQ(MATHHACK_solveCubic(c.data(), s), 1);
    EXPECT_NEAR(s[0], 2.0, 1e-9);
}
