#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "framework/Usleep.h"
#include "geometry/Coordinates.h"
#include "propagation/DistanceToMesh.h"
#include "propagation/MeshElement.h"
#include "propagation/MeshFromPointSet.h"
#include "propagation/MeshGroup.h"
#include "propagation/RayFaceMiss.h"
#include "radiation/Ray.h"

namespace {

void ExpectVector(const VectorQUICK& v, double x, double y, double z) {
    EXPECT_NEAR(v.data[0], x, 1e-9);
    EXPECT_NEAR(v.data[1], y, 1e-9);
    EXPECT_NEAR(v.data[2], z, 1e-9);
}

MeshGroup* GroupOf(std::initializer_list<MeshElement*> elements) {
    MeshGroup* group = new MeshGroup();
    for (MeshElement* element : elements) group->addElement(element);
    return group;
}

// Groups and outline points owned by the test.
struct Scene {
    ~Scene() {
        for (MeshGroup* group : groups) delete group;
        for (Coordinates* point : outline) delete point;
    }
    std::vector<MeshGroup*> groups;
    std::vector<Coordinates*> outline;
};

// The first distance of a ray along dir over the groups, or -1.
double Shoot(Scene& scene, CoordQUICK origin, DirQUICK dir) {
    DirQUICK* normal = nullptr;
    const double t = DistanceToMesh(origin, dir, &normal, scene.groups);
    delete normal;
    return t;
}

}  // namespace

TEST(MeshGroup, BoundIsTheBoxOfAllVerticesAndAnEmptyGroupKeepsItsOwn) {
    MeshGroup group;
    group.addElement(new MeshElement(1, 0, 0, 0, 4, 0, 0, 0, 4, 0));
    group.addElement(new MeshElement(1, 0, 0, 2, 1, 0, 2, 0, 1, 2));
    group.update();
    ExpectVector(group.centre, 2, 2, 1);
    // Half the diagonal of a 4 by 4 by 2 box.
    EXPECT_NEAR(group.radius, 3.0, 1e-12);

    MeshGroup empty;
    empty.update();
    EXPECT_EQ(empty.radius, -1.0);
    double result = 42.0;
    DirQUICK* normal = nullptr;
    CoordQUICK origin(0, 0, 1);
    DirQUICK down(0, 0, -1);
    EXPECT_FALSE(empty.distance(result, origin, down, &normal, -1));
    EXPECT_EQ(result, 42.0);
    EXPECT_EQ(normal, nullptr);
}

TEST(MeshGroup, SphereCullingSparesGroupsBehindTheOriginAndHonoursTheLimit) {
    // Whether the group's one element was tried shows in its scratch vector.
    MeshElement* element = new MeshElement(1, 0, 0, 0, 4, 0, 0, 0, 4, 0);
    std::unique_ptr<MeshGroup> group(GroupOf({element}));
    auto tried = [&](CoordQUICK origin, DirQUICK dir, double limit, double& result) {
        element->crossScratch.data[0] = 123.0;
        DirQUICK* normal = nullptr;
        const bool hit = group->distance(result, origin, dir, &normal, limit);
        delete normal;
        EXPECT_EQ(hit, normal != nullptr);
        return element->crossScratch.data[0] != 123.0;
    };
    double result = -1.0;
    const CoordQUICK origin(2, 2, 10);
    // Centre 10 behind the origin, 2.83 in radius: tested, and of course not hit.
    EXPECT_TRUE(tried(origin, DirQUICK(0, 0, 1), -1, result));
    EXPECT_EQ(result, -1.0);
    // Ahead, but looking 90 degrees away from a sphere seen within 16.4 degrees: culled.
    EXPECT_FALSE(tried(origin, DirQUICK(1, 0, 0), -1, result));
    // Looking at it, unlimited: hit.
    EXPECT_TRUE(tried(origin, DirQUICK(0, 0, -1), -1, result));
    EXPECT_NEAR(result, 10.0, 1e-12);
    // The near side of the sphere is 7.17 away: beyond a limit of 5, within one of 8; the
    // elements themselves ignore the limit.
    result = -1.0;
    EXPECT_FALSE(tried(origin, DirQUICK(0, 0, -1), 5, result));
    EXPECT_EQ(result, -1.0);
    EXPECT_TRUE(tried(origin, DirQUICK(0, 0, -1), 8, result));
    EXPECT_NEAR(result, 10.0, 1e-12);
}

TEST(MeshGroup, NearestElementGivesTheDistanceAndTheNormal) {
    // From (1,1,10) straight down: the floor is 10 away, the sloping plate z = 5 + y / 2
    // is 4.5 away with normal (0,-1,2) / sqrt(5).
    std::unique_ptr<MeshGroup> group(GroupOf({new MeshElement(1, 0, 0, 0, 4, 0, 0, 0, 4, 0),
                                              new MeshElement(1, 0, 0, 5, 4, 0, 5, 0, 4, 7)}));
    CoordQUICK origin(1, 1, 10);
    DirQUICK down(0, 0, -1);
    // The incoming value is no bound: the group's own nearest hit replaces it.
    double result = 1.0;
    DirQUICK* normal = nullptr;
    ASSERT_TRUE(group->distance(result, origin, down, &normal, -1));
    EXPECT_NEAR(result, 4.5, 1e-12);
    ASSERT_NE(normal, nullptr);
    ExpectVector(*normal, 0, -1 / std::sqrt(5.0), 2 / std::sqrt(5.0));
    // A normal the caller already has is filled in place.
    DirQUICK* const held = normal;
    ASSERT_TRUE(group->distance(result, origin, down, &normal, -1));
    EXPECT_EQ(normal, held);
    delete normal;
}

TEST(MeshFromPointSet, ThinOutlineGivesTwoTrianglesPerSegmentWithAQuietDiagonal) {
    Scene scene;
    CoordQUICK up(0, 0, 1);
    scene.outline.push_back(new Coordinates(0, 0, 0));
    EXPECT_FALSE(MeshFromPointSet(scene.groups, 3, scene.outline, up, 1, 2, -1));
    EXPECT_TRUE(scene.groups.empty());
    scene.outline.push_back(new Coordinates(4, 0, 0));
    scene.outline.push_back(new Coordinates(4, 3, 0));
    ASSERT_TRUE(MeshFromPointSet(scene.groups, 3, scene.outline, up, 1, 2, -1));
    ASSERT_EQ(scene.groups.size(), 1u);
    // Three segments, the last closing the outline back to the first point.
    ASSERT_EQ(scene.groups[0]->count(), 6);
    for (MeshElement* element : scene.groups[0]->elements) {
        EXPECT_TRUE(element->diffEdge1 && element->diffEdge2 && !element->diffEdge3);
    }
    // The first quad, (0,0) to (4,0) from z = 1 to 3: the bottom first, an upright second,
    // the diagonal third.
    MeshElement* lower = scene.groups[0]->elements[0];
    std::unique_ptr<DirQUICK> upright(lower->getDir2()), diagonal(lower->getDir3());
    ExpectVector(lower->point1, 4, 0, 1);
    ExpectVector(*upright, 0, 0, 1);
    ExpectVector(*diagonal, 4 / std::sqrt(20.0), 0, -2 / std::sqrt(20.0));

    // The sheets stand where the outline says.
    EXPECT_NEAR(Shoot(scene, CoordQUICK(2, 1, 2), DirQUICK(0, -1, 0)), 1.0, 1e-12);
    EXPECT_EQ(Shoot(scene, CoordQUICK(2, 1, 3.5), DirQUICK(0, -1, 0)), -1.0);
}

TEST(MeshFromPointSet, NearMissesComeFromOuterEdgesNeverFromTheDiagonal) {
    // A 10 by 3 wall along x. Its outline of two points makes the wall twice, once each way.
    Scene scene;
    CoordQUICK up(0, 0, 1);
    scene.outline = {new Coordinates(0, 0, 0), new Coordinates(10, 0, 0)};
    ASSERT_TRUE(MeshFromPointSet(scene.groups, 3, scene.outline, up, 0, 3, -1));
    MeshGroup* wall = scene.groups[0];
    std::vector<RayFaceMiss*> misses;

    // Over the top by 0.02: one record per sheet, both on the top edge.
    Ray overTop;
    overTop.Set(CoordQUICK(5, -2, 3.02), VectorQUICK(0, 1, 0), 10);
    overTop.hitNormal = DirQUICK(1, 0, 0);
    EXPECT_TRUE(wall->missDistance(&overTop, misses, 0.1));
    ASSERT_EQ(misses.size(), 2u);
    for (RayFaceMiss* miss : misses) {
        ExpectVector(miss->edgePoint, 5, 0, 3);
        EXPECT_NEAR(miss->distanceAlongRay, 2.0, 1e-12);
        ExpectVector(miss->inward, 0, 0, -1);
        delete miss;
    }
    misses.clear();

    // Through the wall 0.01 above one diagonal and below the other: within the gap of both
    // diagonals, yet nothing, since the triangle the ray crosses hides it and the other
    // triangle's diagonal may not diffract.
    Ray nearDiagonal;
    nearDiagonal.Set(CoordQUICK(5, -2, 1.51), VectorQUICK(0, 1, 0), 10);
    nearDiagonal.hitNormal = DirQUICK(1, 0, 0);
    EXPECT_TRUE(wall->missDistance(&nearDiagonal, misses, 0.1));
    EXPECT_TRUE(misses.empty());
    // The same lower triangle with its diagonal allowed does record it.
    MeshElement open(3, 10, 0, 0, 0, 0, 0, 0, 0, 3);
    EXPECT_TRUE(open.missDistance(&nearDiagonal, misses, 0.1));
    ASSERT_EQ(misses.size(), 1u);
    delete misses[0];
}

TEST(MeshFromPointSet, AWidthGivesFourOffsetCopiesOfEachQuad) {
    Scene scene;
    CoordQUICK up(0, 0, 1);
    scene.outline = {new Coordinates(0, 0, 0), new Coordinates(10, 0, 0)};
    ASSERT_TRUE(MeshFromPointSet(scene.groups, 3, scene.outline, up, 0, 3, 2));
    ASSERT_EQ(scene.groups.size(), 1u);
    EXPECT_EQ(scene.groups[0]->count(), 16);
    for (MeshElement* element : scene.groups[0]->elements) EXPECT_FALSE(element->diffEdge3);

    // Sheets at y = -1 and y = 1 for z in [0,3]; at y = 0 for z in [1,4] and [-1,2].
    const DirQUICK north(0, 1, 0);
    EXPECT_NEAR(Shoot(scene, CoordQUICK(5, -10, 1.5), north), 9.0, 1e-12);
    EXPECT_NEAR(Shoot(scene, CoordQUICK(5, -10, 3.5), north), 10.0, 1e-12);
    EXPECT_NEAR(Shoot(scene, CoordQUICK(5, -10, -0.5), north), 10.0, 1e-12);
    EXPECT_EQ(Shoot(scene, CoordQUICK(5, -10, 4.5), north), -1.0);
}

TEST(DistanceToMesh, FindsTheNearestHitWhileAnotherThreadHoldsAGroup) {
    // Under (-1,-1,30): a flat plate 5 below, a wide slope 20.1 below whose sphere holds the
    // origin, a tilted plate 14.67 below. The slope is held, so it is tested last and must
    // not leave its normal behind.
    Scene scene;
    scene.groups.push_back(GroupOf({new MeshElement(1, -3, -3, 25, 3, -3, 25, -3, 3, 25)}));
    scene.groups.push_back(
        GroupOf({new MeshElement(1, -100, -100, 0, 100, -100, 0, -100, 100, 20)}));
    scene.groups.push_back(GroupOf({new MeshElement(1, -3, -3, 15, 3, -3, 15, -3, 3, 16)}));
    MeshGroup* held = scene.groups[1];
    std::atomic<bool> holding{false};
    std::thread holder([&] {
        held->lock(true);
        holding = true;
        USLEEP(100000);
        held->unlock();
    });
    while (!holding) std::this_thread::yield();

    CoordQUICK origin(-1, -1, 30);
    DirQUICK down(0, 0, -1);
    DirQUICK* normal = nullptr;
    const double nearest = DistanceToMesh(origin, down, &normal, scene.groups);
    holder.join();
    EXPECT_NEAR(nearest, 5.0, 1e-12);
    ASSERT_NE(normal, nullptr);
    ExpectVector(*normal, 0, 0, 1);
    delete normal;
    for (MeshGroup* group : scene.groups) EXPECT_FALSE(group->isLocked());

    normal = nullptr;
    DirQUICK up(0, 0, 1);
    EXPECT_EQ(DistanceToMesh(origin, up, &normal, scene.groups), -1.0);
    EXPECT_EQ(normal, nullptr);
}
