#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "geometry/CoordLimits.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"
#include "geometry/VectorQUICK.h"

static_assert(std::is_trivially_copyable_v<VectorQUICK>);
static_assert(std::is_trivially_copyable_v<CoordQUICK>);
static_assert(std::is_trivially_copyable_v<DirQUICK>);
static_assert(std::is_trivially_copyable_v<CoordLimits>);

namespace {

constexpr double PI = 3.141592653589793;

}  // namespace

TEST(VectorQUICK, AnglesUseTheSystemsDegreeFactor) {
    const VectorQUICK x(1, 0, 0);
    const VectorQUICK y(0, 1, 0);
    const VectorQUICK minusX(-2, 0, 0);
    EXPECT_EQ(x.Angle(VectorQUICK(5, 0, 0)), 0.0);
    // acos(-1) times 57.30210423832149, i.e. 180 * pi / 3.1412459 and not 180.
    EXPECT_DOUBLE_EQ(x.Angle(minusX), PI * 57.30210423832149);
    EXPECT_DOUBLE_EQ(x.Angle(y), 0.5 * PI * 57.30210423832149);

    // Angle(a, b) ignores the vector it is called on; AngleDiff takes this against a - b.
    const VectorQUICK unrelated(7, 7, 7);
    EXPECT_DOUBLE_EQ(unrelated.Angle(x, y), x.Angle(y));
    EXPECT_DOUBLE_EQ(x.AngleDiff(VectorQUICK(3, 2, 0), VectorQUICK(3, 0, 0)), x.Angle(y));
    // A cosine that rounds beyond 1 is clamped rather than giving NaN.
    const VectorQUICK tilted(0.1, 1.2, 0.7);
    EXPECT_EQ(tilted.Angle(tilted), 0.0);
}

TEST(VectorQUICK, EqualsWithinTheSameAPointTolerance) {
    const CoordQUICK a(1, 2, 3);
    EXPECT_TRUE(a.equals(CoordQUICK(1.009, 2, 3)));
    EXPECT_TRUE(a.equals(CoordQUICK(1.005, 2.005, 3.005)));
    EXPECT_FALSE(a.equals(CoordQUICK(1.011, 2, 3)));
    // A direction never equals a position, and the dimensions must match.
    VectorQUICK flagged(1, 2, 3);
    flagged.normalised = true;
    EXPECT_FALSE(a.equals(flagged));
    VectorQUICK four(4);
    four.data[0] = 1;
    four.data[1] = 2;
    four.data[2] = 3;
    EXPECT_FALSE(a.equals(four));
}

TEST(VectorQUICK, DimensionRules) {
    // Default constructors give dim 4, three-value ones and SetValues dim 3 with the fourth
    // component cleared.
    CoordQUICK c;
    EXPECT_EQ(c.dim, 4);
    for (double v : c.data) EXPECT_EQ(v, 0.0);
    c.data[3] = 9;
    c.SetValues(1, 2, 2);
    EXPECT_EQ(c.dim, 3);
    EXPECT_EQ(c.data[3], 0.0);
    EXPECT_EQ(DirQUICK().dim, 4);

    // diff follows dim: 3 or 4 components, anything else 0.
    VectorQUICK p(4), q(4);
    p.data[3] = 3;
    q.data[0] = 4;
    EXPECT_DOUBLE_EQ(p.diff(q), 5.0);
    p.dim = 3;
    EXPECT_DOUBLE_EQ(p.diff(q), 4.0);
    p.dim = 2;
    EXPECT_EQ(p.diff(q), 0.0);

    // Dot and GetLength always take three components.
    VectorQUICK w(4);
    w.data[2] = 3;
    w.data[3] = 4;
    EXPECT_DOUBLE_EQ(w.GetLength(), 3.0);
    EXPECT_DOUBLE_EQ(w.Dot(w), 9.0);

    // CoordQUICK::diff uses the argument's fourth component when it has one.
    CoordQUICK three(0, 0, 0);
    CoordQUICK withFourth;
    withFourth.data[3] = 2;
    EXPECT_DOUBLE_EQ(three.diff(withFourth), 2.0);
    EXPECT_DOUBLE_EQ(withFourth.diff(three), 0.0);
}

TEST(VectorQUICK, DirectionsStayUnit) {
    const DirQUICK d(3, 0, 4);
    EXPECT_DOUBLE_EQ(d.data[0], 0.6);
    EXPECT_DOUBLE_EQ(d.data[2], 0.8);
    EXPECT_TRUE(d.normalised);

    DirQUICK e;
    e.SetValues(0, 10, 0);
    EXPECT_DOUBLE_EQ(e.data[1], 1.0);
    e.Copy(VectorQUICK(0, 0, -5));
    EXPECT_DOUBLE_EQ(e.data[2], -1.0);
    e.CopyDiff(CoordQUICK(1, 1, 1), CoordQUICK(1, 3, 1));
    EXPECT_DOUBLE_EQ(e.data[1], 1.0);
    EXPECT_DOUBLE_EQ(e.GetLength(), 1.0);

    // A plain vector copied from a direction is not renormalised later.
    VectorQUICK plain(0, 0, 0);
    plain.Copy(d);
    plain *= 2.0;
    EXPECT_DOUBLE_EQ(plain.GetLength(), 2.0);

    // A zero vector normalises to NaN without complaint.
    VectorQUICK zero(0, 0, 0);
    zero.Normalize();
    EXPECT_TRUE(std::isnan(zero.data[0]));
    EXPECT_TRUE(std::isnan(DirQUICK(0, 0, 0).data[2]));

    // The fourth component is scaled too when dim is 4.
    VectorQUICK four(4);
    four.data[0] = 2;
    four.data[3] = 2;
    four.Normalize();
    EXPECT_DOUBLE_EQ(four.data[0], 1.0);
    EXPECT_DOUBLE_EQ(four.data[3], 1.0);
}

TEST(VectorQUICK, ProductsAndDifferences) {
    const VectorQUICK x(1, 0, 0), y(0, 1, 0);
    VectorQUICK z(4);
    z.SetCross(x, y);
    EXPECT_EQ(z.dim, 3);
    EXPECT_DOUBLE_EQ(z.data[2], 1.0);

    // (b - a) x (c - a) of a triangle in the plane z = 5.
    VectorQUICK n(0, 0, 0);
    n.SetCross(VectorQUICK(1, 1, 5), VectorQUICK(3, 1, 5), VectorQUICK(1, 4, 5));
    EXPECT_DOUBLE_EQ(n.data[2], 6.0);

    // n . (a - b), and (b - this) . (d - c) with the first argument unused.
    const VectorQUICK normal(0, 0, 2);
    EXPECT_DOUBLE_EQ(normal.DotDiff(VectorQUICK(5, 5, 4), VectorQUICK(1, 1, 1)), 6.0);
    VectorQUICK odd(0, 0, 2);
    odd.dim = 5;
    EXPECT_EQ(odd.DotDiff(VectorQUICK(5, 5, 4), VectorQUICK(1, 1, 1)), 0.0);
    const VectorQUICK a(1, 0, 0);
    EXPECT_DOUBLE_EQ(a.DotDiff(VectorQUICK(100, 100, 100), VectorQUICK(3, 0, 0),
                               VectorQUICK(0, 0, 0), VectorQUICK(1, 0, 0)),
                     2.0);
    EXPECT_DOUBLE_EQ(x.Dot(2, 3, 4), 2.0);

    CoordQUICK p(1, 2, 3);
    p.PlusProd(VectorQUICK(1, 1, 1), 2.0);
    EXPECT_DOUBLE_EQ(p.data[2], 5.0);
}

TEST(CoordLimits, ContainsIsStrictAfterTheMargin) {
    CoordLimits box;
    box.xMax = box.yMax = box.zMax = 1.0;
    EXPECT_TRUE(box.Contains(CoordQUICK(0.5, 0.5, 0.5), 0.0));
    EXPECT_FALSE(box.Contains(CoordQUICK(1.0, 0.5, 0.5), 0.0));
    EXPECT_FALSE(box.Contains(CoordQUICK(0.0, 0.5, 0.5), 0.0));
    EXPECT_TRUE(box.Contains(CoordQUICK(1.0, 0.5, 0.0), 0.01));
    EXPECT_FALSE(box.Contains(CoordQUICK(0.5, 1.2, 0.5), 0.1));
    EXPECT_TRUE(box.Contains(CoordQUICK(0.5, -0.19, 0.5), 0.2));
}
