#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "geometry/Coordinates.h"
#include "propagation/Interface.h"
#include "propagation/MeshElement.h"
#include "propagation/RayFaceMiss.h"
#include "radiation/Ray.h"

namespace {

// An owner id that names no object.
constexpr int kNoOwner = 987654;

void ExpectVector(const VectorQUICK& v, double x, double y, double z) {
    EXPECT_NEAR(v.data[0], x, 1e-12);
    EXPECT_NEAR(v.data[1], y, 1e-12);
    EXPECT_NEAR(v.data[2], z, 1e-12);
}

// The near-miss records of one call, deleted with the holder.
struct Misses {
    ~Misses() {
        for (RayFaceMiss* miss : list) delete miss;
    }
    std::vector<RayFaceMiss*> list;
};

// A ray that ended on a face with the given normal.
std::unique_ptr<Ray> EndedRay(CoordQUICK origin, VectorQUICK dir, double length,
                              DirQUICK endNormal = DirQUICK(1.0, 0.0, 0.0)) {
    auto ray = std::make_unique<Ray>();
    ray->Set(origin, dir, length);
    ray->hitNormal = endNormal;
    return ray;
}

// The right triangle (0,0,0), (4,0,0), (0,4,0) in the plane z = 0.
MeshElement Floor() { return MeshElement(kNoOwner, 0, 0, 0, 4, 0, 0, 0, 4, 0); }

}  // namespace

TEST(MeshElement, RayTriangleTestKeepsItsFixedTolerances) {
    MeshElement floor = Floor();
    double t = 99.0;

    // Parallel rays never hit, even lying in the plane across the triangle.
    CoordQUICK inPlane(-1, 1, 0);
    DirQUICK alongX(1, 0, 0);
    EXPECT_FALSE(floor.distance(t, inPlane, alongX, -1, false));
    EXPECT_FALSE(floor.distance(t, inPlane, alongX, -1, true));
    EXPECT_EQ(t, 99.0);

    // An oblique hit: from (1,0,3) along (0,0.6,-0.8) the plane is 3.75 away, at (1,2.25).
    CoordQUICK oblique(1, 0, 3);
    DirQUICK slant(0, 0.6, -0.8);
    ASSERT_TRUE(floor.distance(t, oblique, slant, 1.0, false));
    EXPECT_NEAR(t, 3.75, 1e-12);

    // On the face, or behind it: only the whole line counts.
    DirQUICK down(0, 0, -1);
    CoordQUICK onFace(1, 1, 0);
    EXPECT_FALSE(floor.distance(t, onFace, down, -1, false));
    EXPECT_TRUE(floor.distance(t, onFace, down, -1, true));
    EXPECT_NEAR(t, 0.0, 1e-15);
    CoordQUICK below(1, 1, -2);
    EXPECT_FALSE(floor.distance(t, below, down, -1, false));
    EXPECT_TRUE(floor.distance(t, below, down, -1, true));
    EXPECT_NEAR(t, -2.0, 1e-12);

    // A hit exactly 1e-8 ahead is refused; just beyond is taken.
    CoordQUICK atTolerance(1, 1, 1e-8);
    EXPECT_FALSE(floor.distance(t, atTolerance, down, -1, false));
    EXPECT_EQ(t, 1e-8);
    CoordQUICK pastTolerance(1, 1, 1.5e-8);
    EXPECT_TRUE(floor.distance(t, pastTolerance, down, -1, false));

    // The boundary carries no tolerance: the hypotenuse hits, a hair beyond does not.
    CoordQUICK overHypotenuse(2, 2, 5), pastHypotenuse(2.001, 2, 5);
    EXPECT_TRUE(floor.distance(t, overHypotenuse, down, -1, false));
    EXPECT_FALSE(floor.distance(t, pastHypotenuse, down, -1, false));
}

TEST(MeshElement, NearMissRecordsTheEdgeAndItsInwardSide) {
    // The owner id of the element names the interface of the record.
    Interface face;
    ASSERT_TRUE(face.Initialize());
    MeshElement floor(face.GetSimObjectID(), 0, 0, 0, 4, 0, 0, 0, 4, 0);
    // Straight up, 0.02 outside the first edge (the x axis), closest to it at (2,0,0).
    auto ray = EndedRay(CoordQUICK(2, -0.02, -1), VectorQUICK(0, 0, 1), 3);
    Misses misses;
    ASSERT_TRUE(floor.missDistance(ray.get(), misses.list, 0.1));
    ASSERT_EQ(misses.list.size(), 1u);
    const RayFaceMiss& miss = *misses.list[0];
    EXPECT_EQ(miss.ray, ray.get());
    EXPECT_EQ(miss.face, &face);
    EXPECT_NEAR(miss.distanceAlongRay, 1.0, 1e-12);
    EXPECT_NEAR(miss.missDistance, 0.02, 1e-12);
    ExpectVector(miss.edgePoint, 2, 0, 0);
    ExpectVector(miss.edgeDir, 1, 0, 0);
    ExpectVector(miss.inward, 0, 1, 0);
    ExpectVector(miss.faceNormal, 0, 0, 1);

    // A ray whose line crosses the triangle makes no record.
    auto through = EndedRay(CoordQUICK(2, 0.5, -1), VectorQUICK(0, 0, 1), 3);
    EXPECT_FALSE(floor.missDistance(through.get(), misses.list, 0.1));
    // Nor does one that ended on a face whose normal is square to the edge's offset.
    auto flatEnd = EndedRay(CoordQUICK(2, -0.02, -1), VectorQUICK(0, 0, 1), 3, DirQUICK(0, 0, 1));
    EXPECT_FALSE(floor.missDistance(flatEnd.get(), misses.list, 0.1));
    // Nor one farther from the edge than the gap, nor at its start (t = 1 not over 2 gap) or
    // within 5 gap of its end.
    EXPECT_FALSE(floor.missDistance(ray.get(), misses.list, 0.015));
    auto longRay = EndedRay(CoordQUICK(2, -0.02, -1), VectorQUICK(0, 0, 1), 10);
    EXPECT_FALSE(floor.missDistance(longRay.get(), misses.list, 0.5));
    EXPECT_TRUE(floor.missDistance(longRay.get(), misses.list, 0.45));
    auto shortRay = EndedRay(CoordQUICK(2, -0.02, -1), VectorQUICK(0, 0, 1), 1.4);
    EXPECT_FALSE(floor.missDistance(shortRay.get(), misses.list, 0.1));
    // An edge barred from diffraction never yields a record.
    floor.setDiffEdge(false, true, true);
    EXPECT_FALSE(floor.missDistance(ray.get(), misses.list, 0.1));
    EXPECT_EQ(misses.list.size(), 2u);
}

TEST(MeshElement, ACornerCountsForTheFirstEdgeOnly) {
    // One triangle, one ray, three vertex orders (and the three constructors). The ray passes
    // 0.00995 outside the corner at the origin, square to the y-axis edge, and comes closest
    // to it at the corner.
    Coordinates c1(0, 0, 0), c2(0, 4, 0), c3(4, 0, 0);
    CoordQUICK q1(4, 0, 0), q2(0, 4, 0), q3(0, 0, 0);
    MeshElement cornerOnFirst(kNoOwner, c1, c2, c3);
    MeshElement cornerOnSecond(kNoOwner, q1, q2, q3);
    MeshElement cornerOnThird(kNoOwner, 0, 0, 0, 4, 0, 0, 0, 4, 0);
    auto ray = EndedRay(CoordQUICK(-0.11, 0, -1), VectorQUICK(0.1, 0, 1), 3);
    Misses misses;
    EXPECT_FALSE(cornerOnSecond.missDistance(ray.get(), misses.list, 0.05));
    EXPECT_FALSE(cornerOnThird.missDistance(ray.get(), misses.list, 0.05));
    ASSERT_TRUE(cornerOnFirst.missDistance(ray.get(), misses.list, 0.05));
    ASSERT_EQ(misses.list.size(), 1u);
    // The ray line meets z = 0 at (-0.01,0,0); the foot of the perpendicular from the corner
    // lies 1.011 / sqrt(1.01) along it, 0.01 / sqrt(1.01) from the corner.
    EXPECT_NEAR(misses.list[0]->distanceAlongRay, 1.005982599302299, 1e-12);
    EXPECT_NEAR(misses.list[0]->missDistance, 0.009950371902099893, 1e-12);
    ExpectVector(misses.list[0]->edgePoint, 0, 0, 0);
    ExpectVector(misses.list[0]->inward, 1, 0, 0);
}

TEST(MeshElement, TheSecondEdgeAllowsAWiderAngleThanTheOthers) {
    // The x-axis edge as first, second and third edge of the same triangle; the ray passes
    // it 0.05 away at distance 1, an angle of 2.87 degrees.
    MeshElement asFirst = Floor();
    MeshElement asSecond(kNoOwner, 0, 4, 0, 0, 0, 0, 4, 0, 0);
    MeshElement asThird(kNoOwner, 4, 0, 0, 0, 4, 0, 0, 0, 0);
    auto ray = EndedRay(CoordQUICK(2, -0.05, -1), VectorQUICK(0, 0, 1), 3);
    Misses misses;
    EXPECT_FALSE(asFirst.missDistance(ray.get(), misses.list, 0.1));
    EXPECT_FALSE(asThird.missDistance(ray.get(), misses.list, 0.1));
    ASSERT_TRUE(asSecond.missDistance(ray.get(), misses.list, 0.1));
    ExpectVector(misses.list[0]->edgePoint, 2, 0, 0);
    EXPECT_NEAR(misses.list[0]->missDistance, 0.05, 1e-12);
}
