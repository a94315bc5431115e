#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <tuple>
#include <vector>

#include "framework/NexoBase.h"
#include "geometry/Coordinates.h"
#include "propagation/DiffractSource.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "support/WallScene.h"

namespace {

constexpr int BEAMS = 12;
constexpr int RAYS_PER_BEAM = 60;

// A volume whose faces are the walls of the scene.
std::unique_ptr<Volume> VolumeOf(WallScene& scene, eParamValue type) {
    auto volume = std::make_unique<Volume>();
    volume->Initialize();
    volume->SetParameterValue(PN_VOLTYP, type);
    for (Interface* wall : scene.walls) volume->AddInterface(wall);
    return volume;
}

// BEAMS fans from points spread over the scene, handed to the volume.
void Launch(Volume& volume) {
    for (int b = 0; b < BEAMS; b++) {
        auto* beam = new BeamQUICK();
        const double angle = 0.5 * b;
        WallScene::AddFan(beam, CoordQUICK(3.0 * std::cos(angle), 3.0 * std::sin(angle), 1.0),
                          RAYS_PER_BEAM, 80.0);
        volume.lock(true);
        volume.ReceiveBeam(beam);
        volume.unlock();
    }
}

// What each wall received, by launch order of the source beam: (wall, beam, ray, length).
using Reception = std::tuple<int, int, int, double>;
std::vector<Reception> Receptions(WallScene& scene, EMRadiation& radiation) {
    std::vector<Reception> found;
    const std::vector<int>& launched = radiation.GetBeamIds();
    for (size_t w = 0; w < scene.walls.size(); w++) {
        for (const auto& entry : scene.walls[w]->GetReceivedBeams()) {
            const auto position = std::find(launched.begin(), launched.end(), entry.first);
            const int b = static_cast<int>(position - launched.begin());
            for (auto& ray : *GETBEAM(entry.second)->GetRaysp()) {
                found.emplace_back(static_cast<int>(w), b, ray.first, ray.second->GetLength());
            }
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

EMRadiation* RadiationOf(Volume& volume) {
    return dynamic_cast<EMRadiation*>(
        SimObject::GetObjectGlobally(volume.GetRadiationIds().front()));
}

}  // namespace

TEST(VolumeTrace, ParallelPassMatchesSerialPass) {
    WallScene serialScene, parallelScene;
    serialScene.AddRandomWalls(120, 40.0, 11u, PV_DIFFRACT_BERG);
    parallelScene.AddRandomWalls(120, 40.0, 11u, PV_DIFFRACT_BERG);
    // A volume that is not homogeneous always runs its beams one by one.
    auto serial = VolumeOf(serialScene, PV_VOL_HOLLOW);
    auto parallel = VolumeOf(parallelScene, PV_VOL_HOMOGENEOUS);
    Launch(*serial);
    Launch(*parallel);
    EXPECT_EQ(serial->CountReceivedRadiation(), BEAMS);

    std::vector<EMRadiation*> out;
    ASSERT_TRUE(serial->TransmitRadiation(&out));
    NexoBase::SetNumProcs(4);
    NexoBase::parallelSelected.SetForced(parallelVolumeTransmit, true);
    const bool traced = parallel->TransmitRadiation(&out);
    NexoBase::parallelSelected.SetForced(parallelVolumeTransmit, false);
    NexoBase::SetNumProcs(0);
    ASSERT_TRUE(traced);

    const std::vector<Reception> expected = Receptions(serialScene, *RadiationOf(*serial));
    EXPECT_GT(expected.size(), static_cast<size_t>(BEAMS * RAYS_PER_BEAM / 4));
    EXPECT_EQ(Receptions(parallelScene, *RadiationOf(*parallel)), expected);
    // Edge events arrive in another order, and as many stay on each wall.
    size_t events = 0;
    for (size_t w = 0; w < serialScene.walls.size(); w++) {
        events += serialScene.walls[w]->GetDiffractSources().size();
        EXPECT_EQ(parallelScene.walls[w]->GetDiffractSources().size(),
                  serialScene.walls[w]->GetDiffractSources().size());
    }
    EXPECT_GT(events, 0u);

    // Each radiation is reported once; the beams are no longer held.
    ASSERT_EQ(out.size(), 2u);
    EXPECT_FALSE(serial->TransmitRadiation(&out));
    EXPECT_EQ(out.size(), 2u);
    EXPECT_EQ(serial->CountReceivedRadiation(), 0);

    // Clearing deletes the launched beams and keeps the radiation, empty.
    const int firstBeam = RadiationOf(*serial)->GetBeamIds().front();
    serialScene.ClearReceived();
    EXPECT_TRUE(serial->ClearReceivedRadiation());
    EXPECT_EQ(GETBEAM(firstBeam), nullptr);
    EXPECT_EQ(RadiationOf(*serial)->GetBeamRaysCount(), 0);
    EXPECT_FALSE(serial->ClearReceivedRadiation());
    parallelScene.ClearReceived();
}

TEST(VolumeTrace, SteppedRaysStopAtTheFirstFaceBeyondTheStart) {
    WallScene scene;
    Interface* start =
        scene.AddWall(CoordQUICK(0.0, -1.0, 0.0), CoordQUICK(0.0, 1.0, 0.0), 0.0, 3.0);
    Interface* wall =
        scene.AddWall(CoordQUICK(1.2, -1.0, 0.0), CoordQUICK(1.2, 1.0, 0.0), 0.0, 3.0);
    auto volume = VolumeOf(scene, PV_VOL_STEPPED);
    volume->SetParameterValue(PN_VOLSTEPDIST, 0.5);
    BeamQUICK* beam = scene.AddBeam();
    // The ray starts on the first wall: that face, at distance 0, does not end the walk.
    Ray* ray = WallScene::AddRay(beam, CoordQUICK(0.0, 0.0, 1.5), VectorQUICK(1.0, 0.0, 0.0), 9.0);
    ASSERT_TRUE(volume->stepTransmit(beam->GetRaysp(), false));

    // Steps at 0 and 0.5 meet nothing; from 1.0 the wall is 0.2 on.
    EXPECT_NEAR(ray->origin.data[0], 1.0, 1e-12);
    EXPECT_NEAR(ray->GetLength(), 0.2, 1e-9);
    EXPECT_EQ(ray->endInterfaceId, wall->GetSimObjectID());
    EXPECT_NEAR(std::abs(ray->hitNormal.data[0]), 1.0, 1e-12);
    EXPECT_TRUE(start->GetReceivedBeams().empty());
    EXPECT_EQ(wall->GetReceivedBeams().size(), 1u);
}

TEST(VolumeTrace, InsideByCrossingsClosedSurfacesAndTheDirectHitLoop) {
    // A ring of four walls 4 wide and 3 high around the origin, as one interface.
    WallScene scene;
    Interface* ring =
        scene.AddWall(CoordQUICK(-2.0, -2.0, 0.0), CoordQUICK(2.0, -2.0, 0.0), 0.0, 3.0);
    ring->AddBarrierPoint(Coordinates(2.0, 2.0, 0.0));
    ring->AddBarrierPoint(Coordinates(-2.0, 2.0, 0.0));
    auto volume = VolumeOf(scene, PV_VOL_HOMOGENEOUS);
    volume->SetParameterValue(PN_OBJSHAP, PV_SHAPE_SPHERE);
    volume->checkParams();

    // The cast runs along (0.6, 0.7, 0.39): from the middle it leaves through the wall at
    // y = 2, and from outside it enters at x = -2 and leaves at y = 2.
    const double unit = std::sqrt(0.36 + 0.49 + 0.39 * 0.39);
    EXPECT_NEAR(volume->DistanceOutside(CoordQUICK(0.0, 0.0, 1.0)), -2.0 * unit / 0.7, 1e-9);
    EXPECT_NEAR(volume->DistanceOutside(CoordQUICK(-2.5, -2.5, 0.2)), 0.5 * unit / 0.6, 1e-9);
    EXPECT_FALSE(volume->Contains(CoordQUICK(9.0, 0.0, 1.0)));  // no face that way

    // A volume of one closed surface takes that surface's word, whatever its shape says;
    // without faces there is no normal.
    Volume empty;
    empty.Initialize();
    CoordQUICK far(50.0, 0.0, 0.0);
    DirQUICK normal;
    EXPECT_FALSE(empty.GetNormal(far, normal));
    Interface cube;
    cube.Initialize();
    cube.SetParameterValue(PN_TYP, PV_TYPE_CLOSEDSURFACE);
    cube.SetParameterValue(PN_SURFSHAP, PV_SURF_CUBE);
    cube.SetParameterValue(PN_SIZ, 2.0);
    cube.QuickSetToChildren(true);
    empty.AddInterface(&cube);
    empty.SetParameterValue(PN_OBJSHAP, PV_SHAPE_BLOCK);
    empty.checkParams();
    EXPECT_DOUBLE_EQ(empty.DistanceOutside(far), cube.TestHitDistance(far));
    EXPECT_NE(empty.DistanceOutside(far), 50.0);

    // The direct loop cuts rays and test rays at the ring, tells the ring the radiation
    // first, clears its own list, and does not trace a beam twice.
    EMRadiation radiation;
    radiation.Initialize();
    auto* beam = new BeamQUICK();
    Ray* ray = WallScene::AddRay(beam, CoordQUICK(0.0, 0.0, 1.0), VectorQUICK(1.0, 0.0, 0.0), 9.0);
    auto* probe = new Ray();
    probe->Set(CoordQUICK(0.0, 1.0, 1.0), VectorQUICK(0.0, 1.0, 0.0), 9.0);
    beam->AddTestRay(probe);
    probe->beamId = beam->GetBeamId();
    radiation.AddBeamRaysp(beam);
    radiation.AddInterfaceInLine(ring);
    EXPECT_TRUE(radiation.TransmitToInterfaces(nullptr));
    EXPECT_DOUBLE_EQ(ray->GetLength(), 2.0);
    EXPECT_DOUBLE_EQ(probe->GetLength(), 1.0);
    EXPECT_EQ(ring->GetCurrentRadiation(), radiation.getRadId());
    EXPECT_TRUE(radiation.GetInterfaces().empty());
    BeamQUICK* received = GETBEAM(ring->GetReceivedBeams().begin()->second);
    EXPECT_EQ(received->GetTestRaysCount(), 1);
    ray->SetLength(9.0);
    EXPECT_FALSE(radiation.TransmitToInterfaces(&scene.walls));
    EXPECT_DOUBLE_EQ(ray->GetLength(), 9.0);
    scene.ClearReceived();
}
