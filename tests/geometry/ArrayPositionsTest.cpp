#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <set>
#include <vector>

#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Rotation.h"
#include "geometry/triLink.h"

namespace {

constexpr double PI = std::numbers::pi;
constexpr double DEG = PI / 180.0;

// An array of one type and shape; the other parameters are set by each test.
std::unique_ptr<Array> MakeArray(eParamValue type, eParamValue shape) {
    auto array = std::make_unique<Array>();
    array->Initialize();
    array->SetParameterValue(PN_ARRTYP, type);
    array->SetParameterValue(PN_ARRSHA, shape);
    return array;
}

// What one call hands out, with the triangles and solid angles always asked for.
struct Handed {
    std::vector<Coordinates*> positions;
    std::vector<triLink*> links;
    std::vector<double> angles;
    bool ok = false;
};

Handed Take(Array& array, int count) {
    Handed out;
    out.ok = array.getPositions(out.positions, false, &out.links, &out.angles, count);
    return out;
}

double X(Coordinates* p) { return p->Get(0); }
double Y(Coordinates* p) { return p->Get(1); }
double Z(Coordinates* p) { return p->Get(2); }

void ExpectIndicesInRange(const Handed& out) {
    const int size = static_cast<int>(out.positions.size());
    for (triLink* link : out.links) {
        for (int index : {link->a, link->b, link->c}) {
            EXPECT_GE(index, 0);
            EXPECT_LT(index, size);
        }
    }
}

// The directions a full sphere holds at the spacing gap (radians): trunc(pi / gap) + 1
// rings from the north pole, each with as many as fit round it, and one where none fits.
std::vector<int> SphereRings(double gap) {
    std::vector<int> rings;
    const int last = static_cast<int>(PI / gap);
    for (int i = 0; i <= last; ++i) {
        const int m = static_cast<int>(2.0 * PI * std::sin(i * gap) / gap);
        rings.push_back(m > 0 ? m : 1);
    }
    return rings;
}

int Sum(const std::vector<int>& values) {
    int total = 0;
    for (int v : values) total += v;
    return total;
}

}  // namespace

// A full sphere at 10 degrees: rings at 0, 10, ... 180 degrees holding 1, trunc(36 sin),
// ..., 1 directions, all of unit length on their ring. A count replaces the spacing by
// the one that gives each direction an equal cap.
TEST(ArrayPositions, CircleFullRingsBySpacingOrCount) {
    auto array = MakeArray(PV_POINT, PV_CIRCLEFULL);
    array->SetParameterValue(PN_ANG, 360.0);
    array->SetParameterValue(PN_RAYGAP, 10.0);
    Handed out = Take(*array, -1);
    ASSERT_TRUE(out.ok);

    const std::vector<int> rings = SphereRings(10.0 * DEG);
    ASSERT_EQ(rings.size(), 19u);
    EXPECT_EQ(rings[9], 36);
    ASSERT_EQ(out.positions.size(), size_t(Sum(rings)));
    size_t index = 0;
    for (int i = 0; i <= 18; ++i) {
        for (int j = 0; j < rings[i]; ++j, ++index) {
            Coordinates* p = out.positions[index];
            EXPECT_NEAR(Z(p), std::cos(i * 10.0 * DEG), 1e-12) << "ring " << i;
            EXPECT_NEAR(X(p) * X(p) + Y(p) * Y(p) + Z(p) * Z(p), 1.0, 1e-12);
        }
    }
    EXPECT_NEAR(Z(out.positions.back()), -1.0, 1e-12);

    auto counted = MakeArray(PV_POINT, PV_CIRCLEFULL);
    counted->SetParameterValue(PN_ANG, 360.0);
    counted->SetParameterValue(PN_RAYGAP, 10.0);
    Handed hundred = Take(*counted, 100);
    const double gap = 2.0 * std::acos(1.0 - (4.0 * PI / 100.0) / (2.0 * PI));
    EXPECT_NEAR(counted->GetRayGap(), gap, 1e-12);
    EXPECT_EQ(hundred.positions.size(), size_t(Sum(SphereRings(gap))));
    EXPECT_NEAR(double(hundred.positions.size()), 100.0, 25.0);
}

// The zipper between rings covers the sphere once: every index is a direction, the count
// is one triangle per step round each pair of rings, and the solid angles add up to 4 pi.
// GetSolidAngle gives tan(omega / 2), so each is turned back by 2 atan. The spacings
// chosen reach the south pole exactly; the triangles then share their edges exactly, so
// only rounding (about 1e-16 per triangle, some 2e4 triangles) separates the sum from
// 4 pi, while a missing or doubled triangle at 2 degrees is above 1e-3 sr.
TEST(ArrayPositions, CircleFullTrianglesCoverTheSphere) {
    for (double gapDegrees : {10.0, 5.0, 2.0}) {
        auto array = MakeArray(PV_POINT, PV_CIRCLEFULL);
        array->SetParameterValue(PN_ANG, 360.0);
        array->SetParameterValue(PN_RAYGAP, gapDegrees);
        Handed out = Take(*array, -1);
        const std::vector<int> rings = SphereRings(gapDegrees * DEG);
        int triangles = rings[1];
        for (size_t i = 1; i + 1 < rings.size(); ++i) triangles += rings[i] + rings[i + 1];
        EXPECT_EQ(out.links.size(), size_t(triangles)) << gapDegrees;
        ASSERT_EQ(out.angles.size(), out.links.size());
        ExpectIndicesInRange(out);
        double total = 0.0;
        for (double tangent : out.angles) total += 2.0 * std::atan(tangent);
        EXPECT_NEAR(total, 4.0 * PI, 1e-6) << gapDegrees;
    }
}

// m = trunc(0.49 + sqrt(n)): 10 gives a 3 by 3 grid, 16 a 4 by 4 grid with two triangles
// per cell.
TEST(ArrayPositions, SquareFullGridsAndTriangles) {
    for (eParamValue type : {PV_POINT, PV_PLANE}) {
        auto array = MakeArray(type, PV_SQUAREFULL);
        array->SetParameterValue(PN_ANG, 60.0);
        array->SetParameterValue(PN_SIZ, 3.0);
        Handed ten = Take(*array, 10);
        EXPECT_EQ(ten.positions.size(), 9u);
        EXPECT_EQ(ten.links.size(), 8u);
        Handed sixteen = Take(*array, 16);
        EXPECT_EQ(sixteen.positions.size(), 16u);
        EXPECT_EQ(sixteen.links.size(), 18u);
        ExpectIndicesInRange(sixteen);
    }
    auto plane = MakeArray(PV_PLANE, PV_SQUAREFULL);
    plane->SetParameterValue(PN_SIZ, 3.0);
    Handed grid = Take(*plane, 16);
    const double steps[] = {-1.5, -0.5, 0.5, 1.5};
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            EXPECT_NEAR(X(grid.positions[j + 4 * i]), steps[i], 1e-12);
            EXPECT_NEAR(Y(grid.positions[j + 4 * i]), steps[j], 1e-12);
        }
    }
    // The point grid spans the angle: corner (-30, -30) degrees.
    auto point = MakeArray(PV_POINT, PV_SQUAREFULL);
    point->SetParameterValue(PN_ANG, 60.0);
    Handed directions = Take(*point, 9);
    EXPECT_NEAR(X(directions.positions[0]), std::sin(-30.0 * DEG), 1e-12);
    EXPECT_NEAR(Z(directions.positions[0]), std::cos(30.0 * DEG), 1e-12);
}

// A count of 1 gives one position whatever the shape: (0, 0, size) for a point, the
// origin for a plane. Shapes that divide by rings - 1 give NaN with too few rings, and
// shapes other than the point circles give nothing without a count.
TEST(ArrayPositions, SinglePositionsAndDegenerateCounts) {
    for (eParamValue shape : {PV_SINGLE, PV_LINE, PV_STAR, PV_CIRCLEFULL, PV_CIRCLEEMPTY,
                              PV_SQUAREFULL, PV_SQUAREEMPTY}) {
        for (eParamValue type : {PV_POINT, PV_PLANE}) {
            auto array = MakeArray(type, shape);
            array->SetParameterValue(PN_SIZ, 2.0);
            array->SetParameterValue(PN_ANG, 90.0);
            array->SetParameterValue(PN_ARMS, 4);
            Handed out = Take(*array, 1);
            ASSERT_EQ(out.positions.size(), 1u) << shape;
            EXPECT_EQ(Z(out.positions[0]), type == PV_POINT ? 2.0 : 0.0);
            EXPECT_TRUE(out.links.empty());
        }
    }
    auto square = MakeArray(PV_POINT, PV_SQUAREFULL);
    square->SetParameterValue(PN_ANG, 90.0);
    Handed nan = Take(*square, 2);
    ASSERT_EQ(nan.positions.size(), 1u);
    EXPECT_TRUE(std::isnan(X(nan.positions[0])));

    auto line = MakeArray(PV_PLANE, PV_LINE);
    line->SetParameterValue(PN_RAYGAP, 5.0);
    Handed none = Take(*line, -1);
    EXPECT_FALSE(none.ok);
    EXPECT_TRUE(none.positions.empty());
    auto star = MakeArray(PV_PLANE, PV_STAR);
    EXPECT_FALSE(Take(*star, 8).ok);  // no armCount
}

// n / armCount rings of armCount: the point star's centre is a zero direction that joins no
// triangle; the plane star fans its first ring round the centre.
TEST(ArrayPositions, StarTriangles) {
    auto point = MakeArray(PV_POINT, PV_STAR);
    point->SetParameterValue(PN_ARMS, 4);
    point->SetParameterValue(PN_ANG, 90.0);
    point->SetParameterValue(PN_SIZ, 2.0);
    Handed rays = Take(*point, 12);
    ASSERT_EQ(rays.positions.size(), 13u);
    EXPECT_EQ(Z(rays.positions[0]), 0.0);
    EXPECT_NEAR(Z(rays.positions[1]), 1.0, 1e-12);                   // first ring on the axis
    EXPECT_NEAR(X(rays.positions[9]), std::sin(45.0 * DEG), 1e-12);  // last ring at the edge
    EXPECT_EQ(rays.links.size(), 16u);
    ExpectIndicesInRange(rays);
    for (triLink* link : rays.links) EXPECT_NE(std::min({link->a, link->b, link->c}), 0);

    auto plane = MakeArray(PV_PLANE, PV_STAR);
    plane->SetParameterValue(PN_ARMS, 4);
    plane->SetParameterValue(PN_SIZ, 2.0);
    Handed points = Take(*plane, 12);
    ASSERT_EQ(points.positions.size(), 13u);
    EXPECT_NEAR(Y(points.positions[12]), 0.0, 1e-12);
    EXPECT_NEAR(X(points.positions[12]), -1.0, 1e-12);
    EXPECT_EQ(points.links.size(), 20u);
    ExpectIndicesInRange(points);
    std::set<int> fan;
    for (size_t k = 0; k < 4; ++k) fan.insert(points.links[k]->a);
    EXPECT_EQ(fan, std::set<int>{0});
}

// The plane shapes lie in z = 0 at the sizes their tables give.
TEST(ArrayPositions, PlaneShapes) {
    auto line = MakeArray(PV_PLANE, PV_LINE);
    line->SetParameterValue(PN_SIZ, 4.0);
    Handed points = Take(*line, 5);
    ASSERT_EQ(points.positions.size(), 5u);
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(X(points.positions[i]), i - 2.0, 1e-12);

    auto ring = MakeArray(PV_PLANE, PV_CIRCLEEMPTY);
    ring->SetParameterValue(PN_SIZ, 2.0);
    Handed circle = Take(*ring, 4);
    ASSERT_EQ(circle.positions.size(), 4u);
    EXPECT_NEAR(Y(circle.positions[1]), 1.0, 1e-12);
    EXPECT_NEAR(X(circle.positions[2]), -1.0, 1e-12);

    auto border = MakeArray(PV_PLANE, PV_SQUAREEMPTY);
    border->SetParameterValue(PN_SIZ, 2.0);
    Handed frame = Take(*border, 8);
    ASSERT_EQ(frame.positions.size(), 8u);
    for (Coordinates* p : frame.positions) {
        EXPECT_NEAR(std::max(std::abs(X(p)), std::abs(Y(p))), 1.0, 1e-12);
    }

    // Radius 1 and 20 points: spacing sqrt(pi / 20), rings at 0, 0.5 and 1 holding 1, 7, 15.
    auto disc = MakeArray(PV_PLANE, PV_CIRCLEFULL);
    disc->SetParameterValue(PN_SIZ, 2.0);
    Handed full = Take(*disc, 20);
    ASSERT_EQ(full.positions.size(), 23u);
    EXPECT_NEAR(X(full.positions[1]), 0.5, 1e-12);
    EXPECT_NEAR(X(full.positions[8]), 1.0, 1e-12);
    ExpectIndicesInRange(full);
    std::set<int> used;
    for (triLink* link : full.links) used.insert({link->a, link->b, link->c});
    EXPECT_EQ(used.size(), 23u);
    for (Coordinates* p : full.positions) EXPECT_EQ(Z(p), 0.0);
}

// The cache stays until the parameters or the count change. Clones are the caller's and
// leave the cache alone; the array's own count serves when there is neither a count nor
// a spacing.
TEST(ArrayPositions, CacheAndCopies) {
    auto array = MakeArray(PV_PLANE, PV_LINE);
    array->SetParameterValue(PN_SIZ, 4.0);
    array->SetParameterValue(PN_CNT, 3);
    std::vector<Coordinates*> first, again, clones;
    ASSERT_TRUE(array->getPositions(first, false, nullptr, nullptr, -1));
    ASSERT_EQ(first.size(), 3u);
    ASSERT_TRUE(array->getPositions(clones, true, nullptr, nullptr, -1));
    ASSERT_EQ(clones.size(), 3u);
    EXPECT_NE(clones[0], first[0]);
    EXPECT_EQ(X(clones[0]), -2.0);
    for (Coordinates* clone : clones) delete clone;
    ASSERT_TRUE(array->getPositions(again, false, nullptr, nullptr, -1));
    EXPECT_EQ(again, first);
    EXPECT_EQ(X(again[0]), -2.0);

    array->SetParameterValue(PN_SIZ, 8.0);
    std::vector<Coordinates*> resized;
    array->getPositions(resized, false, nullptr, nullptr, -1);
    EXPECT_EQ(X(resized[0]), -4.0);
    std::vector<Coordinates*> five;
    array->getPositions(five, false, nullptr, nullptr, 5);
    EXPECT_EQ(five.size(), 5u);
}

// Single, line and circleFull directions turn with the array's rotation; the other
// shapes do not. The turn factor is 3.1412459 / 180, so a quarter turn is not exact.
TEST(ArrayPositions, RotationTurnsSomeShapes) {
    const double a = 90.0 * 3.1412459 / 180.0;
    for (eParamValue shape : {PV_SINGLE, PV_CIRCLEEMPTY}) {
        auto array = MakeArray(PV_POINT, shape);
        array->SetParameterValue(PN_SIZ, 2.0);
        array->SetParameterValue(PN_ANG, 0.0);
        auto* rotation = new Rotation(3);
        rotation->Initialize();
        array->AddChild(rotation);
        rotation->GetDir()->SetValues(0.0, 1.0, 0.0);
        rotation->SetStartAngle(90.0);
        Handed out = Take(*array, 3);
        ASSERT_FALSE(out.positions.empty());
        Coordinates* p = out.positions[0];
        if (shape == PV_SINGLE) {
            EXPECT_NEAR(X(p), 2.0 * std::sin(a), 1e-12);
            EXPECT_NEAR(Z(p), 2.0 * std::cos(a), 1e-12);
        } else {
            EXPECT_NEAR(Z(p), 1.0, 1e-12);
        }
    }
}
