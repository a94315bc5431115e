#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <set>
#include <vector>

#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/triLink.h"

namespace {

constexpr double PI = std::numbers::pi;
constexpr double DEG = PI / 180.0;

struct Handed {
    std::unique_ptr<Array> array = std::make_unique<Array>();  // holds the cache
    std::vector<Coordinates*> positions;
    std::vector<triLink*> links;
    std::vector<double> angles;
    bool ok = false;
};

// The cached positions, triangles and solid angles of an array of one type and shape.
Handed Take(eParamValue type, eParamValue shape, int count, double size = 2.0, double angle = 90.0,
            double gap = -1.0, int arms = 4) {
    Handed out;
    Array& array = *out.array;
    array.Initialize();
    array.SetParameterValue(PN_ARRTYP, type);
    array.SetParameterValue(PN_ARRSHA, shape);
    array.SetParameterValue(PN_SIZ, size);
    array.SetParameterValue(PN_ANG, angle);
    array.SetParameterValue(PN_ARMS, arms);
    if (gap > 0.0) array.SetParameterValue(PN_RAYGAP, gap);
    out.ok = array.getPositions(out.positions, false, &out.links, &out.angles, count);
    for (triLink* link : out.links) {
        for (int index : {link->a, link->b, link->c}) {
            EXPECT_TRUE(index >= 0 && index < int(out.positions.size())) << shape;
        }
    }
    return out;
}

// A full sphere at the spacing gap (radians): trunc(pi / gap) + 1 rings from the north
// pole, each holding trunc(2 pi sin(theta) / gap) directions, or one where none fits.
std::vector<int> SphereRings(double gap) {
    std::vector<int> rings;
    for (int i = 0; i <= int(PI / gap); ++i) {
        rings.push_back(std::max(1, int(2.0 * PI * std::sin(i * gap) / gap)));
    }
    return rings;
}

}  // namespace

// Rings of directions by spacing, with the zipper of triangles between them covering the
// sphere once. GetSolidAngle gives tan(omega / 2), turned back by 2 atan. These spacings
// reach the south pole exactly, so the triangles share their edges and only rounding
// (about 1e-16 on each of some 2e4 triangles) separates the sum from 4 pi, while a missing
// or doubled triangle at 2 degrees is above 1e-3 sr. A count replaces the spacing.
TEST(ArrayPositions, CircleFullSphere) {
    for (double gapDegrees : {10.0, 5.0, 2.0}) {
        Handed out = Take(PV_POINT, PV_CIRCLEFULL, -1, 1.0, 360.0, gapDegrees);
        const std::vector<int> rings = SphereRings(gapDegrees * DEG);
        int positions = 0, triangles = rings[1];
        for (size_t i = 0; i < rings.size(); ++i) positions += rings[i];
        for (size_t i = 1; i + 1 < rings.size(); ++i) triangles += rings[i] + rings[i + 1];
        ASSERT_EQ(out.positions.size(), size_t(positions));
        EXPECT_EQ(out.links.size(), size_t(triangles));
        double total = 0.0;
        for (double tangent : out.angles) total += 2.0 * std::atan(tangent);
        EXPECT_NEAR(total, 4.0 * PI, 1e-6) << gapDegrees;
        EXPECT_NEAR(out.positions[rings[0] + rings[1]]->Get(2), std::cos(2 * gapDegrees * DEG),
                    1e-12);
    }
    EXPECT_EQ(SphereRings(10.0 * DEG)[9], 36);

    const double gap = 2.0 * std::acos(1.0 - (4.0 * PI / 100.0) / (2.0 * PI));
    Handed counted = Take(PV_POINT, PV_CIRCLEFULL, 100, 1.0, 360.0, 10.0);
    std::vector<int> rings = SphereRings(gap);
    int expected = 0;
    for (int ring : rings) expected += ring;
    EXPECT_EQ(counted.positions.size(), size_t(expected));
}

// Counts and triangles per shape: a count of 1 gives one position for any shape, squares
// take trunc(0.49 + sqrt(n)) a side, stars n / armCount rings. Shapes that divide by
// rings - 1 give NaN with too few rings; without a count only the point circles yield.
TEST(ArrayPositions, ShapeCountsAndTriangles) {
    for (eParamValue shape : {PV_SINGLE, PV_LINE, PV_STAR, PV_CIRCLEFULL, PV_CIRCLEEMPTY,
                              PV_SQUAREFULL, PV_SQUAREEMPTY}) {
        Handed point = Take(PV_POINT, shape, 1);
        Handed plane = Take(PV_PLANE, shape, 1);
        ASSERT_EQ(point.positions.size(), 1u) << shape;
        ASSERT_EQ(plane.positions.size(), 1u) << shape;
        EXPECT_EQ(point.positions[0]->Get(2), 2.0);
        EXPECT_EQ(plane.positions[0]->Get(2), 0.0);
    }
    for (eParamValue type : {PV_POINT, PV_PLANE}) {
        EXPECT_EQ(Take(type, PV_SQUAREFULL, 10).positions.size(), 9u);
        Handed sixteen = Take(type, PV_SQUAREFULL, 16);
        EXPECT_EQ(sixteen.positions.size(), 16u);
        EXPECT_EQ(sixteen.links.size(), 18u);
        Handed star = Take(type, PV_STAR, 12);
        EXPECT_EQ(star.positions.size(), 13u);
        EXPECT_EQ(star.links.size(), type == PV_POINT ? 16u : 20u);
        EXPECT_FALSE(Take(type, PV_LINE, -1, 2.0, 90.0, 5.0).ok);
    }
    // The point star's head is a zero direction that joins no triangle.
    Handed star = Take(PV_POINT, PV_STAR, 12);
    EXPECT_EQ(star.positions[0]->GetLength(), 0.0);
    for (triLink* link : star.links) EXPECT_GT(std::min({link->a, link->b, link->c}), 0);
    EXPECT_NEAR(star.positions[9]->Get(0), std::sin(45.0 * DEG), 1e-12);
    EXPECT_TRUE(std::isnan(Take(PV_POINT, PV_SQUAREFULL, 2).positions[0]->Get(0)));
    EXPECT_FALSE(Take(PV_PLANE, PV_STAR, 8, 2.0, 90.0, -1.0, 0).ok);
}

// The plane shapes lie in z = 0 at the sizes their tables give.
TEST(ArrayPositions, PlaneShapes) {
    Handed line = Take(PV_PLANE, PV_LINE, 5, 4.0);
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(line.positions[i]->Get(0), i - 2.0, 1e-12);
    Handed grid = Take(PV_PLANE, PV_SQUAREFULL, 16, 3.0);
    EXPECT_NEAR(grid.positions[7]->Get(0), -0.5, 1e-12);
    EXPECT_NEAR(grid.positions[7]->Get(1), 1.5, 1e-12);
    Handed ring = Take(PV_PLANE, PV_CIRCLEEMPTY, 4);
    EXPECT_NEAR(ring.positions[2]->Get(0), -1.0, 1e-12);
    Handed frame = Take(PV_PLANE, PV_SQUAREEMPTY, 8);
    ASSERT_EQ(frame.positions.size(), 8u);
    EXPECT_NEAR(frame.positions[7]->Get(1), 1.0, 1e-12);
    // Radius 1 and 20 points: spacing sqrt(pi / 20), rings at 0, 0.5, 1 of 1, 7, 15 points,
    // every one of them a corner.
    Handed disc = Take(PV_PLANE, PV_CIRCLEFULL, 20);
    ASSERT_EQ(disc.positions.size(), 23u);
    EXPECT_NEAR(disc.positions[8]->Get(0), 1.0, 1e-12);
    std::set<int> corners;
    for (triLink* link : disc.links) corners.insert({link->a, link->b, link->c});
    EXPECT_EQ(corners.size(), 23u);
}

// The cache stays until the parameters or the count change; clones are the caller's and
// leave it alone; the array's own count serves when there is neither count nor spacing.
TEST(ArrayPositions, CacheAndCopies) {
    Array array;
    array.Initialize();
    array.SetParameterValue(PN_ARRTYP, PV_PLANE);
    array.SetParameterValue(PN_ARRSHA, PV_LINE);
    array.SetParameterValue(PN_SIZ, 4.0);
    array.SetParameterValue(PN_CNT, 3);
    std::vector<Coordinates*> first, clones, again, resized;
    ASSERT_TRUE(array.getPositions(first, false, nullptr, nullptr, -1));
    ASSERT_TRUE(array.getPositions(clones, true, nullptr, nullptr, -1));
    ASSERT_EQ(clones.size(), 3u);
    EXPECT_NE(clones[0], first[0]);
    for (Coordinates* clone : clones) delete clone;
    array.getPositions(again, false, nullptr, nullptr, -1);
    EXPECT_EQ(again, first);
    EXPECT_EQ(again[0]->Get(0), -2.0);
    array.SetParameterValue(PN_SIZ, 8.0);
    array.getPositions(resized, false, nullptr, nullptr, 5);
    EXPECT_EQ(resized.size(), 5u);
    EXPECT_EQ(resized[0]->Get(0), -4.0);
}
