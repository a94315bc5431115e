#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "geometry/Coordinates.h"
#include "propagation/DiffractSource.h"
#include "propagation/Interface.h"
#include "radiation/BeamQUICK.h"
#include "radiation/TraceRaysTask.h"
#include "support/WallScene.h"

namespace {

const CoordQUICK SOURCE(0.0, 0.0, 1.5);
const VectorQUICK EAST(1.0, 0.0, 0.0);

// A wall across the x axis at x, from y = -1 to y = 1, 3 high.
Interface* CrossWall(WallScene& scene, double x, eParamValue diffract = PV_DIFFRACT_OFF) {
    return scene.AddWall(CoordQUICK(x, -1.0, 0.0), CoordQUICK(x, 1.0, 0.0), 0.0, 3.0, diffract);
}

// The rays the interface received from the beam, or none.
BeamQUICK* Received(Interface* face, BeamQUICK* source) {
    auto entry = face->GetReceivedBeams().find(source->GetBeamId());
    return entry == face->GetReceivedBeams().end() ? nullptr : GETBEAM(entry->second);
}

void Trace(BeamQUICK* beam, std::vector<Interface*>& faces) {
    TraceRaysTask task(beam->GetBeamId(), beam->GetRaysVecp(), 0, beam->GetRaysCount(), &faces);
    TraceRaysToFacesTask(&task);
}

// Walls that rays pass beside: a diffracting wall at x = 10 and, behind it, a slanted
// backstop that every ray hits, so that the rays carry a hit normal across the wall.
struct EdgeScene {
    explicit EdgeScene(eParamValue model) {
        wall = CrossWall(scene, 10.0, model);
        scene.AddWall(CoordQUICK(20.0, -5.0, 0.0), CoordQUICK(30.0, 5.0, 0.0), 0.0, 3.0);
        beam = scene.AddBeam();
    }
    Ray* PassAt(double y, double z) {
        return WallScene::AddRay(beam, CoordQUICK(0.0, y, z), EAST, 60.0);
    }

    WallScene scene;
    Interface* wall;
    BeamQUICK* beam;
};

}  // namespace

TEST(TraceRays, NearestFaceReceivesAndOuterLimitComesLast) {
    WallScene scene;
    Interface* outer = CrossWall(scene, 2.0);
    outer->SetName("outerLimit");
    Interface* near = CrossWall(scene, 2.0);
    Interface* far = CrossWall(scene, 5.0);
    BeamQUICK* beam = scene.AddBeam();
    Ray* east = WallScene::AddRay(beam, SOURCE, EAST, 10.0);
    Ray* west = WallScene::AddRay(beam, SOURCE, VectorQUICK(-1.0, 0.0, 0.0), 10.0);
    west->endInterfaceId = far->GetSimObjectID();  // stale: cleared before the sweep
    Trace(beam, scene.walls);

    // The boundary at the same distance as a real face, listed first, loses the tie.
    EXPECT_DOUBLE_EQ(east->GetLength(), 2.0);
    EXPECT_EQ(east->endInterfaceId, near->GetSimObjectID());
    ASSERT_NE(Received(near, beam), nullptr);
    EXPECT_EQ(Received(near, beam)->getRayFromId(0), east);
    EXPECT_EQ(Received(outer, beam), nullptr);
    EXPECT_EQ(Received(far, beam), nullptr);
    // A ray that meets nothing keeps its length and is received nowhere.
    EXPECT_EQ(west->endInterfaceId, -1);
    EXPECT_DOUBLE_EQ(west->GetLength(), 10.0);
}

TEST(TraceRays, TransmitToOwnOrGivenInterfaces) {
    WallScene scene;
    Interface* wall = CrossWall(scene, 3.0);
    BeamQUICK* beam = scene.AddBeam();
    Ray* ray = WallScene::AddRay(beam, SOURCE, EAST, 10.0);

    // A list given leaves the beam's own list alone.
    beam->GetInterfaces().push_back(wall);
    std::vector<Interface*> none;
    EXPECT_TRUE(beam->TransmitToInterfaces(&none));
    EXPECT_EQ(ray->endInterfaceId, -1);
    EXPECT_EQ(beam->GetInterfaces().size(), 1u);

    // Null uses the beam's own list and then clears it.
    EXPECT_TRUE(beam->TransmitToInterfaces(nullptr));
    EXPECT_DOUBLE_EQ(ray->GetLength(), 3.0);
    EXPECT_NE(Received(wall, beam), nullptr);
    EXPECT_TRUE(beam->GetInterfaces().empty());
    // The box of the rays runs from the origin to the hit.
    CoordLimits box;
    beam->CopyCoordLimits(box);
    EXPECT_DOUBLE_EQ(box.xMin, 0.0);
    EXPECT_DOUBLE_EQ(box.xMax, 3.0);

    BeamQUICK* empty = scene.AddBeam();
    EXPECT_FALSE(empty->TransmitToInterfaces(&scene.walls));
}

TEST(TraceRays, EdgeEventsOnePerRayNearDuplicatesMerged) {
    EdgeScene edge(PV_DIFFRACT_BERG);
    Ray* close = edge.PassAt(1.3, 1.5);     // 0.3 beside the edge at y = 1
    edge.PassAt(2.3, 1.5);                  // 1.3 beside: beyond the gap of 1
    Ray* merged = edge.PassAt(1.3, 1.55);   // its edge point 0.05 above the first
    Ray* separate = edge.PassAt(1.2, 2.0);  // 0.5 above: a source of its own
    ASSERT_TRUE(edge.beam->TransmitToInterfaces(&edge.scene.walls));

    // Every ray went on to the backstop, 26.3 away for the first.
    EXPECT_NEAR(close->GetLength(), 26.3, 1e-9);
    std::vector<DiffractSource>& sources = edge.wall->GetDiffractSources();
    ASSERT_EQ(sources.size(), 2u);
    // Of the two close events with equal sweeps, the earlier in the list went.
    const DiffractSource& kept = sources[0];
    EXPECT_EQ(kept.ray, merged);
    EXPECT_NEAR(kept.edgePoint.data[0], 10.0, 1e-9);
    EXPECT_NEAR(kept.edgePoint.data[1], 1.0, 1e-9);
    EXPECT_NEAR(kept.edgePoint.data[2], 1.55, 1e-9);
    EXPECT_NEAR(kept.missDistance, 0.3, 1e-9);
    // The fan turns from the ray's line (east) to inward (south, into the wall).
    EXPECT_NEAR(kept.inward.data[1], -1.0, 1e-9);
    EXPECT_NEAR(kept.sweepAngle, std::acos(0.0) * 57.30210423832149, 1e-9);
    EXPECT_EQ(sources[1].ray, separate);
    EXPECT_NEAR(sources[1].missDistance, 0.2, 1e-9);
    EXPECT_NEAR(sources[1].edgePoint.data[2], 2.0, 1e-9);
}

TEST(TraceRays, NoEdgeSearchWhereDiffractionIsOff) {
    // A wall of one point has no mesh, so an edge search on it reports itself.
    WallScene scene;
    Interface* bare = CrossWall(scene, 5.0);
    bare->ClearBarrierPoints();
    bare->AddBarrierPoint(Coordinates(5.0, 0.0, 0.0));
    BeamQUICK* beam = scene.AddBeam();
    WallScene::AddRay(beam, SOURCE, EAST, 10.0);
    testing::internal::CaptureStdout();
    beam->TransmitToInterfaces(&scene.walls);
    EXPECT_EQ(testing::internal::GetCapturedStdout().find("TestRayMiss"), std::string::npos);

    bare->SetParameterValue(PN_BARDIFMDL, PV_DIFFRACT_KED);
    testing::internal::CaptureStdout();
    beam->TransmitToInterfaces(&scene.walls);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("TestRayMiss"), std::string::npos);
}

TEST(TraceRays, FaceAndRangeTakesTheSineOfDegrees) {
    WallScene scene;
    Interface* wall = CrossWall(scene, 10.0);
    BeamQUICK* beam = scene.AddBeam();
    beamRange range;
    range.centre = SOURCE;
    range.radius = 1.0;
    range.axis.SetValues(0.0, 1.0, 0.0);
    range.halfAngle = 89.0;
    EXPECT_TRUE(beam->TestFaceAndRange(wall, range));  // no mesh yet: anywhere

    // Built, the wall's sphere lies 10 away, square to the axis, sqrt(13) in radius.
    wall->lock(true);
    wall->CheckForExactPointSet();
    wall->unlock();
    const double square = std::acos(0.0) * 57.30210423832149;
    // 10 sin(1.0054...) taken as radians is 8.4, outside; 10 sin(80.0054...) is negative.
    EXPECT_FALSE(beam->TestFaceAndRange(wall, range));
    range.halfAngle = 10.0;
    EXPECT_LT(std::sin(square - 10.0) * 10.0, 1.0);
    EXPECT_TRUE(beam->TestFaceAndRange(wall, range));
    // Spheres that overlap (10 < sqrt(13) + 6.5) pass at once.
    range.halfAngle = 89.0;
    range.radius = 6.5;
    EXPECT_TRUE(beam->TestFaceAndRange(wall, range));
}
