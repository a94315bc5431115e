#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "control/OpticElement.h"
#include "documents/CElement.h"
#include "framework/Parameter.h"
#include "geometry/Aperture.h"
#include "geometry/Coordinates.h"
#include "geometry/SurfaceShape.h"
#include "propagation/Detection.h"
#include "propagation/FreqResponse.h"
#include "propagation/FreqResponseArray.h"
#include "propagation/Interface.h"
#include "propagation/MeshElement.h"
#include "propagation/MeshGroup.h"
#include "propagation/RayFaceMiss.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Ray.h"
#include "radiation/TraceRaysTask.h"
#include "support/LogCapture.h"

namespace {

using Faces = std::vector<Interface*>;

std::unique_ptr<Interface> MakeFace(const char* name, eParamValue type) {
    auto face = std::make_unique<Interface>();
    face->Initialize();
    face->SetName(name);
    face->SetParameterValue(PN_TYP, type);
    return face;
}

// A thin wall in the plane x = x0 from y0 to y1, standing from z = 0 to z = 2.
std::unique_ptr<Interface> Wall(double x0, double y0 = -1.0, double y1 = 1.0) {
    auto face = MakeFace("wall", PV_TYPE_POINTPOINTHEIGHT);
    face->SetParameterValue(PN_BASE, 0.0);
    face->SetParameterValue(PN_HEIGHT, 2.0);
    face->AddBarrierPoint(Coordinates(x0, y0, 0.0));
    face->AddBarrierPoint(Coordinates(x0, y1, 0.0));
    return face;
}

// A beam of rays from the given origins, all along dir, 50 m long, at 2.4 GHz.
struct Rays {
    Rays(const std::vector<CoordQUICK>& origins, const DirQUICK& dir) {
        for (const CoordQUICK& origin : origins) {
            auto* ray = new Ray();
            ray->Set(origin, dir, 50.0);
            ray->SetWavelength(0.125);
            ray->SetBeamRayId(static_cast<int>(list.size()));
            beam->AddRay(ray);
            list.push_back(ray);
        }
    }
    ~Rays() { delete beam; }
    BeamQUICK* beam = new BeamQUICK();
    std::vector<Ray*> list;
};

// The trace's own sweep over the faces: the closest hit wins, "outerLimit" is tested last,
// and each ray that ended on a face is received there.
void Trace(std::vector<Ray*>& rays, Faces faces) {
    TraceRaysTask task(-1, &rays, 0, static_cast<int>(rays.size()), &faces);
    TraceRaysToFacesTask(&task);
}

double TotalArea(MeshGroup* group) {
    double area = 0.0;
    for (MeshElement* element : group->elements) {
        CoordQUICK cross;
        cross.SetCross(element->edge1, element->edge2);
        area += 0.5 * cross.GetLength();
    }
    return area;
}

std::unique_ptr<Interface> Polygon(const std::vector<std::pair<double, double>>& outline) {
    auto face = MakeFace("floor", PV_TYPE_POLYGON);
    face->SetParameterValue(PN_SURFOFFSET, 2.0);
    for (auto [x, y] : outline) face->AddBarrierPoint(Coordinates(x, y, 0.0));
    return face;
}

// A disc of radius 0.5 (or a square 1 wide) at z = 2, facing up.
std::unique_ptr<Interface> Disc(eParamValue apertureShape, bool withAxis) {
    auto face = MakeFace("disc", PV_TYPE_APERTUREFUNCTION);
    face->SetParameterValue(PN_APSHAP, apertureShape);
    face->SetParameterValue(PN_SPHERRAD, 0.5);
    face->SetParameterValue(PN_APSIZE, 1.0);
    face->SetParameterValue(PN_SURFSHAP, PV_SURF_FLAT);
    face->SetParameterValue(PN_SURFOFFSET, 2.0);
    face->QuickSetToChildren(true);
    if (withAxis) {
        auto* axis = new Coordinates(0.0, 0.0, 1.0);
        axis->Initialize();
        face->GetAperture()->AddChild(axis);
        axis->SetName("Axis");
    }
    return face;
}

std::unique_ptr<Volume> MakeVolume() {
    auto volume = std::make_unique<Volume>();
    volume->Initialize();
    return volume;
}

}  // namespace

namespace {

// One entry of a loss table, at the rays' 2.4 GHz, holding the named loss in dB.
void AddLossAt24GHz(FreqResponseArray& table, eParamName name, double dB) {
    Parameter frequency;
    frequency.setParName(PN_FREQ);
    frequency.setValue(2.4e9);
    table.getResponse(&frequency, true)->SetParameterValue(name, dB, PU_DB);
}

}  // namespace

TEST(Interface, ClosestHitWinsAndATieKeepsTheFirstFace) {
    auto first = Wall(5.0);
    auto twin = Wall(5.0);
    auto nearer = Wall(3.0, -1.0, 0.5);
    Rays rays({{0, 0, 1}, {0, 0.8, 1}, {0, 5, 1}, {0, 0.2, 1}}, DirQUICK(1, 0, 0));
    // The last ray has used up its hops and is not tested at all.
    rays.list[3]->SetTraceLimit(0);
    rays.list[3]->SetTraceCount(1);

    Trace(rays.list, {first.get(), twin.get(), nearer.get()});
    EXPECT_EQ(rays.list[0]->endInterfaceId, nearer->GetSimObjectID());
    EXPECT_DOUBLE_EQ(rays.list[0]->GetLength(), 3.0);
    EXPECT_DOUBLE_EQ(std::abs(rays.list[0]->hitNormal.data[0]), 1.0);
    // Past the nearer wall's end: both walls at 5 m are equally near and the first keeps it.
    EXPECT_EQ(rays.list[1]->endInterfaceId, first->GetSimObjectID());
    EXPECT_DOUBLE_EQ(rays.list[1]->GetLength(), 5.0);
    // Rays that miss everything keep -1 and are received nowhere.
    EXPECT_EQ(rays.list[2]->endInterfaceId, -1);
    EXPECT_EQ(rays.list[3]->endInterfaceId, -1);
    EXPECT_DOUBLE_EQ(rays.list[2]->GetLength(), 50.0);
    EXPECT_EQ(twin->GetReceivedBeams().size(), 0u);
    ASSERT_EQ(first->GetReceivedBeams().size(), 1u);
    EXPECT_EQ(GETBEAM(first->GetReceivedBeams().begin()->second)->GetRaysCount(), 1);

    // Test rays: the smallest distance over the beam, the same by the mesh walk.
    auto* probe = new Ray();
    probe->Set(CoordQUICK(0, 0, 1), DirQUICK(1, 0, 0), 50.0);
    rays.beam->AddTestRay(probe);
    EXPECT_TRUE(nearer->CanTestRad());
    EXPECT_DOUBLE_EQ(nearer->TestRadiation(rays.beam), 3.0);
    EXPECT_DOUBLE_EQ(first->TestRayHit(probe, -1.0), 5.0);
    for (Interface* face : {first.get(), twin.get(), nearer.get()}) {
        face->ClearReceivedRadiation(true);
    }
}

TEST(Interface, OuterLimitIsTestedLastAndLosesATie) {
    auto outer = MakeFace("outerLimit", PV_TYPE_CLOSEDSURFACE);
    outer->SetParameterValue(PN_SURFSHAP, PV_SURF_CUBE);
    outer->SetParameterValue(PN_SIZ, 20.0);
    auto onTheBoundary = Wall(10.0);
    Rays rays({{0, 0, 1}, {0, 4, 1}}, DirQUICK(1, 0, 0));

    Trace(rays.list, {outer.get(), onTheBoundary.get()});
    EXPECT_EQ(rays.list[0]->endInterfaceId, onTheBoundary->GetSimObjectID());
    EXPECT_EQ(rays.list[1]->endInterfaceId, outer->GetSimObjectID());
    EXPECT_DOUBLE_EQ(rays.list[1]->GetLength(), 10.0);
    outer->ClearReceivedRadiation(true);
    onTheBoundary->ClearReceivedRadiation(true);
}

TEST(Interface, BoundingSphereIsTwiceTheGroupsAndCullsRaysThatCannotReachIt) {
    auto wall = Wall(5.0);
    CoordQUICK centre;
    double size = 0.0;
    EXPECT_FALSE(wall->hasCentreAndSize());
    ASSERT_TRUE(wall->CheckForExactPointSet());
    ASSERT_TRUE(wall->getCentreAndSize(centre, size));
    // The wall spans 2 by 2 m: its box has a diagonal of 2 sqrt(2), the group's radius is
    // half that, and the interface's sphere twice the group's.
    ASSERT_EQ(wall->GetMeshGroups().size(), 1u);
    EXPECT_DOUBLE_EQ(size, 2.0 * wall->GetMeshGroups()[0]->radius);
    EXPECT_NEAR(size, 2.0 * std::sqrt(2.0), 1e-12);
    EXPECT_NEAR(centre.diff(CoordQUICK(5, 0, 1)), 0.0, 1e-12);

    Rays rays({{0, 0, 1}, {0, 0, 1}, {5, 2, 1}, {0, 3.5, 1}}, DirQUICK(1, 0, 0));
    rays.list[1]->dir = DirQUICK(-1, 0, 0);
    EXPECT_TRUE(wall->TestRayCentreSize(rays.list[0]));
    EXPECT_FALSE(wall->TestRayCentreSize(rays.list[1]));  // turned away
    EXPECT_TRUE(wall->TestRayCentreSize(rays.list[2]));   // starts inside
    EXPECT_FALSE(wall->TestRayCentreSize(rays.list[3]));  // passes 3.5 m off the centre

    // No group, no sphere: every ray is let through.
    auto lonely = MakeFace("lonely", PV_TYPE_POINTPOINTHEIGHT);
    EXPECT_FALSE(lonely->CheckForExactPointSet());
    EXPECT_FALSE(lonely->hasCentreAndSize());
    EXPECT_FALSE(lonely->getCentreAndSize(centre, size));
    EXPECT_TRUE(lonely->TestRayCentreSize(rays.list[1]));
}

TEST(Interface, PointPointHeightWithFewerThanTwoPointsHasNoHits) {
    auto stub = MakeFace("stub", PV_TYPE_POINTPOINTHEIGHT);
    stub->SetParameterValue(PN_BASE, 0.0);
    stub->SetParameterValue(PN_HEIGHT, 2.0);
    stub->AddBarrierPoint(Coordinates(5.0, 0.0, 0.0));
    Rays rays({{0, 0, 1}}, DirQUICK(1, 0, 0));
    EXPECT_DOUBLE_EQ(stub->TestRayHit(rays.list[0], -1.0), -1.0);
    Trace(rays.list, {stub.get()});
    EXPECT_EQ(rays.list[0]->endInterfaceId, -1);
    EXPECT_FALSE(stub->HasExactMesh());
    EXPECT_TRUE(stub->GetMeshGroups().empty());
    EXPECT_TRUE(stub->GetReceivedBeams().empty());
}

TEST(Interface, ConcavePolygonIsClippedIntoEarsOnItsPlane) {
    // An L of area 6 with six corners: four triangles, whichever way the outline runs.
    const std::vector<std::pair<double, double>> ell = {{0, 0}, {4, 0}, {4, 1},
                                                        {1, 1}, {1, 3}, {0, 3}};
    const std::vector<std::pair<double, double>> reversed(ell.rbegin(), ell.rend());
    for (const auto& outline : {ell, reversed}) {
        auto floor = Polygon(outline);
        ASSERT_TRUE(floor->CheckForExactPointSet());
        ASSERT_EQ(floor->GetMeshGroups().size(), 1u);
        MeshGroup* group = floor->GetMeshGroups()[0];
        EXPECT_EQ(group->count(), 4);
        EXPECT_NEAR(TotalArea(group), 6.0, 1e-12);
        int diffracting = 0;
        for (MeshElement* element : group->elements) {
            EXPECT_DOUBLE_EQ(element->point1.data[2], 2.0);  // lifted by surfaceOffset
            diffracting += element->diffEdge1 + element->diffEdge2 + element->diffEdge3;
        }
        EXPECT_EQ(diffracting, 6);  // the outline's edges, never the cuts inside

        // A ray down through the notch of the L meets nothing; one through the foot does.
        Rays rays({{3, 2, 5}, {3, 0.5, 5}}, DirQUICK(0, 0, -1));
        EXPECT_DOUBLE_EQ(floor->TestRayHit(rays.list[0], -1.0), -1.0);
        EXPECT_DOUBLE_EQ(floor->TestRayHit(rays.list[1], -1.0), 3.0);
    }
}

TEST(Interface, CubeIsTwelveOutwardTrianglesInOneGroup) {
    auto cube = MakeFace("outerLimit", PV_TYPE_CLOSEDSURFACE);
    cube->SetParameterValue(PN_SURFSHAP, PV_SURF_CUBE);
    cube->SetParameterValue(PN_SIZ, 2.0);
    ASSERT_TRUE(cube->CheckForExactPointSet());
    ASSERT_EQ(cube->GetMeshGroups().size(), 1u);
    MeshGroup* group = cube->GetMeshGroups()[0];
    EXPECT_EQ(group->count(), 12);
    EXPECT_NEAR(TotalArea(group), 24.0, 1e-12);
    for (MeshElement* element : group->elements) {
        EXPECT_GT(element->normal.Dot(element->centre), 0.0);
        EXPECT_FALSE(element->diffEdge3);  // the face's diagonal
    }
    Rays rays({{0, 0, 0}, {0.3, -0.2, 0.1}}, DirQUICK(0, 1, 0));
    EXPECT_DOUBLE_EQ(cube->TestRayHit(rays.list[0], -1.0), 1.0);
    EXPECT_NEAR(cube->TestRayHit(rays.list[1], -1.0), 1.2, 1e-12);
    EXPECT_NEAR(rays.list[1]->hitNormal.data[1], 1.0, 1e-12);
}

TEST(Interface, ApertureSurfaceIsNotMetAgainByARayLeavingIt) {
    // A circle has no exact outline: the disc is tested in closed form.
    auto disc = Disc(PV_APSHAPE_CIRCLE, false);
    Rays rays({{0.2, 0, 0}, {0.9, 0, 0}, {0.2, 0, 0}}, DirQUICK(0, 0, 1));
    EXPECT_DOUBLE_EQ(disc->TestRayHit(rays.list[0], -1.0), 2.0);
    EXPECT_FALSE(disc->HasExactMesh());
    EXPECT_DOUBLE_EQ(disc->TestRayHit(rays.list[1], -1.0), -1.0);  // outside the circle
    EXPECT_DOUBLE_EQ(disc->TestRayHit(rays.list[0], 1.5), -1.0);   // beyond the limit
    rays.list[2]->startInterfaceId = disc->GetSimObjectID();
    EXPECT_DOUBLE_EQ(disc->TestRayHit(rays.list[2], -1.0), -1.0);
    Trace(rays.list, {disc.get()});
    EXPECT_EQ(rays.list[0]->endInterfaceId, disc->GetSimObjectID());
    EXPECT_EQ(rays.list[2]->endInterfaceId, -1);
    DirQUICK normal;
    CoordQUICK onDisc(0.2, 0, 2);
    ASSERT_TRUE(disc->GetNormal(onDisc, normal));
    EXPECT_NEAR(std::abs(normal.data[2]), 1.0, 1e-12);
    disc->ClearReceivedRadiation(true);

    // A square is exact: with its "Axis" it becomes a fan of two triangles; without, the
    // interface stays unmeshed and says why.
    auto square = Disc(PV_APSHAPE_SQUARE, true);
    ASSERT_TRUE(square->CheckForExactPointSet());
    EXPECT_EQ(square->GetMeshGroups()[0]->count(), 2);
    EXPECT_NEAR(TotalArea(square->GetMeshGroups()[0]), 1.0, 1e-12);
    EXPECT_DOUBLE_EQ(square->TestRayHit(rays.list[0], -1.0), 2.0);
    LogCapture log;
    auto noAxis = Disc(PV_APSHAPE_SQUARE, false);
    EXPECT_FALSE(noAxis->CheckForExactPointSet());
    EXPECT_TRUE(log.Contains("aperture->GetChild(axisName); failed\n"));
}

TEST(Interface, ReflectLossByModel) {
    auto face = Wall(5.0);
    Rays rays({{0, 0, 1}}, DirQUICK(1, 0, 0));
    Ray* ray = rays.list[0];
    // Fresnel at 30 degrees from index 1 into index 2: the mean of the two amplitudes.
    const double fresnel = 0.33241283198876537;
    EXPECT_NEAR(face->getReflectPowerLossREL(PV_LOSS_THIN, ray, 30.0, 1.0, 4.0), fresnel, 1e-12);
    EXPECT_NEAR(face->getReflectPowerLossREL(PV_LOSS_THICK, ray, 30.0, 1.0, 4.0), fresnel, 1e-12);
    EXPECT_TRUE(Interface::IsTotalInternalReflection(60.0, 4.0, 1.0));
    EXPECT_FALSE(Interface::IsTotalInternalReflection(20.0, 4.0, 1.0));
    EXPECT_NEAR(Interface::GetSinTxAngle(30.0, 1.0, 4.0), 0.25, 1e-12);
    EXPECT_DOUBLE_EQ(face->getReflectPowerLossREL(PV_LOSS_THICK, ray, 60.0, 4.0, 1.0), 1.0);
    EXPECT_DOUBLE_EQ(face->getReflectPowerLossREL(PV_EMPTY, ray, 30.0, 1.0, 4.0), 0.5);

    // dBLoss: 0.5 with no table; 6 dB at the ray's frequency is 10^-0.6, halved on a face
    // that shares the loss with its pair.
    EXPECT_DOUBLE_EQ(face->getReflectPowerLossREL(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), 0.5);
    FreqResponseArray table;
    AddLossAt24GHz(table, PN_REFLOSS, 6.0);
    face->SetResponse(&table);
    EXPECT_NEAR(face->getReflectPowerLossREL(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), 0.251188643150958,
                1e-12);
    face->SetHalfLoss(true);
    EXPECT_NEAR(face->getReflectPowerLossREL(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), 0.125594321575479,
                1e-12);
    // The table has no transmit loss: nothing is taken off.
    EXPECT_DOUBLE_EQ(face->getTransmitPowerLossDB(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), 0.0);
    face->SetResponse(nullptr);
}

TEST(Interface, TransmitLossByModel) {
    auto face = Wall(5.0);
    Rays rays({{0, 0, 1}}, DirQUICK(1, 0, 0));
    Ray* ray = rays.list[0];
    // The mean in dB of the two power transmission factors at 30 degrees, index 1 into 2.
    EXPECT_NEAR(face->getTransmitPowerLossDB(PV_LOSS_THIN, ray, 30.0, 1.0, 4.0), -1.008084939140543,
                1e-12);
    EXPECT_NEAR(face->getTransmitPowerLossDB(PV_LOSS_THICK, ray, 30.0, 1.0, 4.0),
                -1.008084939140543, 1e-12);
    EXPECT_DOUBLE_EQ(face->getTransmitPowerLossDB(PV_LOSS_THICK, ray, 60.0, 4.0, 1.0), 0.0);

    EXPECT_DOUBLE_EQ(face->getTransmitPowerLossDB(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), 0.0);
    FreqResponseArray table;
    AddLossAt24GHz(table, PN_TRANSLOSS, 3.0);
    face->SetResponse(&table);
    EXPECT_DOUBLE_EQ(face->getTransmitPowerLossDB(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), -3.0);
    face->SetHalfLoss(true);
    EXPECT_DOUBLE_EQ(face->getTransmitPowerLossDB(PV_LOSS_DB, ray, 30.0, 1.0, 4.0), -1.5);
    face->SetResponse(nullptr);
}

TEST(Interface, EachSourceBeamGetsOneReceivingBeam) {
    auto air = MakeVolume();
    auto wall = Wall(5.0);
    Rays left({{0, 0, 1}, {0, 0.5, 1}}, DirQUICK(1, 0, 0));
    Rays right({{0, -0.5, 1}}, DirQUICK(1, 0, 0));
    left.beam->SetVolume(air.get());
    left.beam->SetSourceName("ap1");
    Trace(left.list, {wall.get()});
    Trace(right.list, {wall.get()});

    ASSERT_EQ(wall->GetReceivedBeams().size(), 2u);
    BeamQUICK* fromLeft = wall->GetReceivingBeam(left.beam->GetBeamId());
    ASSERT_NE(fromLeft, nullptr);
    EXPECT_EQ(wall->GetReceivingBeam(left.beam->GetBeamId()), fromLeft);
    EXPECT_EQ(fromLeft->GetRaysCount(), 2);
    EXPECT_FALSE(fromLeft->getRayOwn());
    EXPECT_FALSE(fromLeft->getRayOrigin());
    EXPECT_EQ(fromLeft->GetVolume(), air.get());
    EXPECT_EQ(fromLeft->GetSourceName(), "ap1");
    EXPECT_EQ(wall->GetReceivingBeam(right.beam->GetBeamId())->GetRaysCount(), 1);
    EXPECT_EQ(wall->GetReceivingBeam(-5), nullptr);  // no such source beam
    wall->ClearReceivedRadiation(true);
    EXPECT_TRUE(wall->GetReceivedBeams().empty());
}

TEST(Interface, TransmitRadiationSendsReflectionBackAndTransmissionOn) {
    OpticElement::resources.init();
    auto air = MakeVolume();
    auto far = MakeVolume();
    auto wall = Wall(5.0);
    ASSERT_TRUE(wall->AddVolume(air.get()));
    ASSERT_TRUE(wall->AddVolume(far->GetSimObjectID()));
    Rays rays({{0, 0, 1}}, DirQUICK(1, 0.1, 0));
    rays.beam->SetVolume(air.get());
    Trace(rays.list, {wall.get()});

    ASSERT_TRUE(wall->TransmitRadiation());
    ASSERT_EQ(air->GetBeamIds().size(), 1u);
    ASSERT_EQ(far->GetBeamIds().size(), 1u);
    BeamQUICK* reflected = GETBEAM(air->GetBeamIds()[0]);
    BeamQUICK* transmitted = GETBEAM(far->GetBeamIds()[0]);
    ASSERT_EQ(reflected->GetRaysCount(), 1);
    ASSERT_EQ(transmitted->GetRaysCount(), 1);
    EXPECT_LT(reflected->getRayFromSeq(0)->dir.data[0], 0.0);
    EXPECT_GT(transmitted->getRayFromSeq(0)->dir.data[0], 0.0);
    EXPECT_EQ(transmitted->GetVolume(), far.get());
    // A receiving beam is transmitted once.
    EXPECT_FALSE(wall->TransmitRadiation());
    EXPECT_EQ(air->GetBeamIds().size(), 1u);

    // Children under minTracePower are dropped and make no beam.
    wall->ClearReceivedRadiation(true);
    wall->SetParameterValue(PN_TRCMIN, 1000.0);
    Rays weak({{0, 0, 1}}, DirQUICK(1, 0.1, 0));
    weak.beam->SetVolume(air.get());
    Trace(weak.list, {wall.get()});
    EXPECT_FALSE(wall->TransmitRadiation());
    EXPECT_EQ(air->GetBeamIds().size(), 1u);
    EXPECT_EQ(far->GetBeamIds().size(), 1u);
    wall->ClearReceivedRadiation(true);
}

TEST(Interface, VolumesTakeTheTwoSidesOnce) {
    auto a = MakeVolume();
    auto b = MakeVolume();
    auto c = MakeVolume();
    auto face = Wall(1.0);
    EXPECT_FALSE(face->AddVolume(static_cast<Volume*>(nullptr)));
    EXPECT_FALSE(face->AddVolume(-7));
    EXPECT_TRUE(face->AddVolume(a.get()));
    EXPECT_FALSE(face->AddVolume(a.get()));
    EXPECT_TRUE(face->AddVolume(b.get()));
    EXPECT_FALSE(face->AddVolume(c.get()));
    EXPECT_TRUE(face->RemoveVolume(a.get()));
    EXPECT_FALSE(face->RemoveVolume(a.get()));
    EXPECT_TRUE(face->AddVolume(c.get()));
    EXPECT_EQ(face->GetVolumeA(), c->GetSimObjectID());
    EXPECT_EQ(face->GetVolumeB(), b->GetSimObjectID());
}

TEST(Interface, MissTestsAskForAMeshAndDetectionKeepsCopies) {
    auto disc = Disc(PV_APSHAPE_CIRCLE, false);
    Rays rays({{0, 0, 1}}, DirQUICK(1, 0, 0));
    std::vector<RayFaceMiss*> misses;
    testing::internal::CaptureStdout();
    EXPECT_DOUBLE_EQ(disc->TestRayMiss(rays.list[0], misses, 1.0), -1.0);
    CoordQUICK point(0, 0, 0);
    EXPECT_DOUBLE_EQ(disc->TestMissDistance(point), -1.0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "ERROR!!! TestRayMiss() called on interface without exact mesh\n"
              "ERROR!!! TestMissDistance(CoordQUICK& point) called..?\n");
    auto wall = Wall(5.0);
    EXPECT_DOUBLE_EQ(wall->TestRayMiss(rays.list[0], misses, 1.0), 0.0);  // it hits
    EXPECT_TRUE(misses.empty());

    wall->SetParameterValue(PN_PROFRES, 25.0);
    ASSERT_TRUE(wall->SetDetection(true));
    Detection* detection = wall->GetDetection();
    ASSERT_NE(detection, nullptr);
    double resolution = 0.0;
    EXPECT_TRUE(detection->GetParameterValue(PN_PROFRES, resolution));
    EXPECT_DOUBLE_EQ(resolution, 25.0);
    Trace(rays.list, {wall.get()});
    ASSERT_EQ(detection->GetProfile().GetHits().size(), 1u);
    Ray* copy = detection->GetProfile().GetHits()[0];
    EXPECT_NE(copy, rays.list[0]);
    EXPECT_DOUBLE_EQ(copy->GetLength(), 5.0);
    EXPECT_TRUE(detection->Evaluate());
    EXPECT_DOUBLE_EQ(detection->GetProfile().GetResolution(), 25.0);
    EXPECT_TRUE(wall->ClearDetection());
    EXPECT_TRUE(detection->GetProfile().GetHits().empty());
    EXPECT_EQ(detection->GetBeam(), nullptr);
    EXPECT_TRUE(wall->SetDetection(false));
    EXPECT_EQ(wall->GetDetection(), nullptr);
    wall->ClearReceivedRadiation(true);
}

TEST(Interface, ReloadLinksShapeAndApertureAndRebuildsTheMesh) {
    auto square = Disc(PV_APSHAPE_SQUARE, true);
    auto wall = Wall(5.0);
    CElement squareXml;
    CElement wallXml;
    ASSERT_TRUE(square->ToXml(&squareXml, false));
    ASSERT_TRUE(wall->ToXml(&wallXml, false));

    LogCapture log;
    Interface reloaded;
    reloaded.Initialize();
    ASSERT_TRUE(reloaded.FromXml(&squareXml));
    ASSERT_TRUE(reloaded.GetHasShape() && reloaded.GetHasAperture());
    EXPECT_EQ(reloaded.GetAperture()->GetShape(), reloaded.GetShape());
    EXPECT_EQ(reloaded.GetShape()->GetAperture(), reloaded.GetAperture());
    EXPECT_TRUE(log.Contains("hasVolumes == false\n"));
    Rays rays({{0.2, 0, 0}, {0, 0, 1}}, DirQUICK(0, 0, 1));
    EXPECT_DOUBLE_EQ(reloaded.TestRayHit(rays.list[0], -1.0), 2.0);
    EXPECT_TRUE(reloaded.HasExactMesh());

    // A wall has no surface: its points come back and make the same mesh.
    log.Clear();
    Interface plain;
    plain.Initialize();
    ASSERT_TRUE(plain.FromXml(&wallXml));
    EXPECT_TRUE(log.Contains("hasShape = "));
    EXPECT_TRUE(log.Contains("hasAperture = "));
    EXPECT_EQ(plain.GetBarrierPoints().size(), 2u);
    rays.list[1]->dir = DirQUICK(1, 0, 0);
    EXPECT_DOUBLE_EQ(plain.TestRayHit(rays.list[1], -1.0), 5.0);
}
