#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "propagation/Interface.h"
#include "radiation/BeamLimitPair.h"
#include "radiation/BeamQUICK.h"
#include "radiation/PointRaysTask.h"
#include "radiation/Ray.h"
#include "radiation/TestPoint.h"
#include "support/TempDir.h"
#include "support/WallScene.h"

namespace {

constexpr double SOURCE_DB = 20.0;

// A test point at p, named name, with the catch size and receive gain given.
std::unique_ptr<TestPoint> PointAt(const CoordQUICK& p, const char* name = "rx",
                                   double gainRx = 0.0, double catchSize = 1.0) {
    auto point = std::make_unique<TestPoint>();
    point->Initialize();
    point->SetName(name);
    point->SetCentre(p.data[0], p.data[1], p.data[2]);
    point->SetParameterValue(PN_GAINRX, gainRx);
    point->SetParameterValue(PN_RXSIZ, catchSize);
    return point;
}

// A beam of the scene named after its source, with its box to be set by Seal.
BeamQUICK* SourceBeam(WallScene& scene, const char* source) {
    BeamQUICK* beam = scene.AddBeam();
    beam->SetSourceName(source);
    return beam;
}

Ray* AddSourceRay(BeamQUICK* beam, const CoordQUICK& origin, const VectorQUICK& dir, double length,
                  double sourceDB = SOURCE_DB) {
    Ray* ray = WallScene::AddRay(beam, origin, dir, length);
    ray->SetSourcePowerDB(sourceDB);
    return ray;
}

std::vector<BeamLimitPair> Seal(const std::vector<BeamQUICK*>& beams) {
    std::vector<BeamLimitPair> pairs;
    for (BeamQUICK* beam : beams) {
        beam->CheckRayLimits();
        pairs.emplace_back(beam);
    }
    return pairs;
}

bool Sweep(TestPoint& point, const std::vector<BeamQUICK*>& beams) {
    std::vector<BeamLimitPair> pairs = Seal(beams);
    return point.updateFromBeams(pairs);
}

// A wall across the x axis at x = 5, facing -x, 10 high.
Interface* WallAtFive(WallScene& scene, const char* name) {
    Interface* wall =
        scene.AddWall(CoordQUICK(5.0, -5.0, 0.0), CoordQUICK(5.0, 5.0, 0.0), -5.0, 10.0);
    wall->SetName(name);
    return wall;
}

// The rows of a CSV file, each split at ", ".
std::vector<std::vector<std::string>> ReadCsv(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        std::vector<std::string> cells;
        size_t start = 0;
        for (size_t at = line.find(", "); at != std::string::npos; at = line.find(", ", start)) {
            cells.push_back(line.substr(start, at - start));
            start = at + 2;
        }
        cells.push_back(line.substr(start));
        rows.push_back(cells);
    }
    return rows;
}

double Column(const std::vector<std::vector<std::string>>& rows, int row, const char* name) {
    const auto& header = rows.front();
    const size_t at = std::find(header.begin(), header.end(), name) - header.begin();
    return std::stod(rows.at(row).at(at));
}

}  // namespace

TEST(TestPoint, PointAtTheEndIsCaughtButDoesNotQualify) {
    WallScene scene;
    BeamQUICK* beam = SourceBeam(scene, "ap1");
    AddSourceRay(beam, CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 10.0);
    auto atEnd = PointAt(CoordQUICK(10.0, 0.0, 0.0), "end");
    auto inside = PointAt(CoordQUICK(6.0, 0.2, 0.0), "inside");
    auto beside = PointAt(CoordQUICK(6.0, 0.6, 0.0), "beside");
    for (TestPoint* point : {atEnd.get(), inside.get(), beside.get()}) Sweep(*point, {beam});

    EXPECT_EQ(atEnd->GetRayCount(), 1);
    double out = 7.0;
    EXPECT_FALSE(atEnd->GetMaxPowerdB(out, "ap1"));
    EXPECT_EQ(out, 7.0);
    EXPECT_EQ(atEnd->GetPowerDB("ap1"), -120.0);

    EXPECT_EQ(beside->GetRayCount(), 0);
    ASSERT_EQ(inside->GetRayCount(), 1);
    Ray* ray = beam->getRayFromSeq(0);
    const double distance = std::hypot(6.0, 0.2);
    EXPECT_DOUBLE_EQ(inside->GetPowerDB("ap1"), ray->getPowerAtDistDB(distance, 0.0));
    // Each sweep starts from unmarked rays; the caught ones are marked by the traceback.
    EXPECT_FALSE(ray->getRaySuccess());
    inside->tracebackRaySuccess();
    EXPECT_TRUE(ray->getRaySuccess());
    EXPECT_DOUBLE_EQ(ray->hitDistance, distance);
}

TEST(TestPoint, SideTestsOfTheStartAndTheEnd) {
    WallScene scene;
    Interface* wall = WallAtFive(scene, "wall");
    Interface* outer = WallAtFive(scene, "outerLimit");
    BeamQUICK* beam = SourceBeam(scene, "ap1");
    // A source ray is tested on neither side, even with a normal that would refuse it.
    Ray* source = AddSourceRay(beam, CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 5.0);
    source->hitNormal.SetValues(-1.0, 0.0, 0.0);
    // A ray from a wall whose parent has gone: no normal to test against.
    Ray* orphan = AddSourceRay(beam, CoordQUICK(0.0, 1.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 5.0);
    orphan->startInterfaceId = wall->GetSimObjectID();
    orphan->prevBeamId = 999999;
    orphan->prevRayId = 0;
    auto onSource = PointAt(CoordQUICK(2.0, 0.0, 0.0));
    auto onOrphan = PointAt(CoordQUICK(2.0, 1.0, 0.0));
    Sweep(*onSource, {beam});
    Sweep(*onOrphan, {beam});
    EXPECT_EQ(onSource->GetRayCount(), 1);
    EXPECT_EQ(onOrphan->GetRayCount(), 0);

    // Two rays ending on a wall at x = 5; a point just behind it, within the flat reach of
    // the capsule, is caught through "outerLimit" but not through a real wall.
    BeamQUICK* ending = SourceBeam(scene, "ap1");
    Ray* onWall = AddSourceRay(ending, CoordQUICK(0.0, 3.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 5.0);
    onWall->endInterfaceId = wall->GetSimObjectID();
    onWall->hitNormal.SetValues(-1.0, 0.0, 0.0);
    Ray* onOuter =
        AddSourceRay(ending, CoordQUICK(0.0, -3.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 5.0);
    onOuter->endInterfaceId = outer->GetSimObjectID();
    onOuter->hitNormal.SetValues(-1.0, 0.0, 0.0);
    auto behindWall = PointAt(CoordQUICK(5.3, 3.0, 0.0));
    auto behindOuter = PointAt(CoordQUICK(5.3, -3.0, 0.0));
    auto beforeWall = PointAt(CoordQUICK(4.7, 3.0, 0.0));
    for (TestPoint* point : {behindWall.get(), behindOuter.get(), beforeWall.get()}) {
        Sweep(*point, {ending});
    }
    EXPECT_EQ(behindWall->GetRayCount(), 0);
    EXPECT_EQ(behindOuter->GetRayCount(), 1);
    EXPECT_EQ(beforeWall->GetRayCount(), 1);
}

TEST(TestPoint, PointBehindAWallIsNotCaughtByTheRayBeyondIt) {
    WallScene scene;
    Interface* wall = WallAtFive(scene, "wall");
    BeamQUICK* incident = SourceBeam(scene, "ap1");
    Ray* parent =
        AddSourceRay(incident, CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 5.0);
    parent->endInterfaceId = wall->GetSimObjectID();
    parent->hitNormal.SetValues(-1.0, 0.0, 0.0);
    // The transmitted ray leaves the wall on the far side.
    BeamQUICK* transmitted = SourceBeam(scene, "ap1");
    Ray* child =
        AddSourceRay(transmitted, CoordQUICK(5.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 10.0);
    child->setPrevRay(parent, 5.0);
    child->startInterfaceId = wall->GetSimObjectID();
    child->SetTraceCount(1);

    // Just in front of the wall, within the capsule of the transmitted ray's origin.
    auto front = PointAt(CoordQUICK(4.8, 0.0, 0.0));
    auto far = PointAt(CoordQUICK(8.0, 0.0, 0.0));
    Sweep(*front, {transmitted});
    Sweep(*far, {incident, transmitted});
    EXPECT_EQ(front->GetRayCount(), 0);
    ASSERT_EQ(far->GetRayCount(), 1);

    // The traceback marks the whole path and draws the parent to the child's origin.
    parent->hitDistance = -1.0;
    far->tracebackRaySuccess();
    EXPECT_TRUE(child->getRaySuccess());
    EXPECT_TRUE(parent->getRaySuccess());
    EXPECT_DOUBLE_EQ(child->hitDistance, 3.0);
    EXPECT_DOUBLE_EQ(parent->hitDistance, 5.0);
}

TEST(TestPoint, PowerPerSourceAndMaxRssi) {
    WallScene scene;
    BeamQUICK* a = SourceBeam(scene, "apA");
    BeamQUICK* b = SourceBeam(scene, "apB");
    AddSourceRay(a, CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 20.0, 10.0);
    AddSourceRay(a, CoordQUICK(0.0, 0.1, 0.0), VectorQUICK(1.0, 0.0, 0.0), 20.0, 12.0);
    AddSourceRay(b, CoordQUICK(10.0, 5.0, 0.0), VectorQUICK(0.0, -1.0, 0.0), 20.0, 30.0);
    // A beam whose box misses the point is not even looked at.
    BeamQUICK* away = SourceBeam(scene, "apC");
    AddSourceRay(away, CoordQUICK(50.0, 50.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 5.0);
    away->getRayFromSeq(0)->hitDistance = 2.5;
    auto point = PointAt(CoordQUICK(10.0, 0.0, 0.0));
    std::vector<int> ids = {a->GetBeamId(), b->GetBeamId(), away->GetBeamId(), 987654};
    Seal({a, b, away});
    point->updateFromBeams(ids);

    EXPECT_EQ(point->GetRayCount(), 3);
    EXPECT_EQ(away->getRayFromSeq(0)->hitDistance, 2.5);
    const double powerA = a->getRayFromSeq(1)->getPowerAtDistDB(std::hypot(10.0, 0.1), 0.0);
    const double powerB = b->getRayFromSeq(0)->getPowerAtDistDB(5.0, 0.0);
    EXPECT_DOUBLE_EQ(point->GetPowerDB("apA"), powerA);
    EXPECT_DOUBLE_EQ(point->GetPowerDB("apB"), powerB);
    EXPECT_DOUBLE_EQ(point->GetPowerDB("Max RSSI"), std::max(powerA, powerB));
    EXPECT_EQ(point->GetPowerDB("apC"), -120.0);

    TestPoint::SourcePowers powers;
    EXPECT_TRUE(point->GetMaxSourcePowerdB(powers));
    ASSERT_EQ(powers.size(), 2u);
    EXPECT_DOUBLE_EQ(powers["apA"].first, powerA);
    EXPECT_EQ(powers["apA"].second, 2);
    EXPECT_EQ(powers["apB"].second, 1);

    point->ClearRays();
    EXPECT_EQ(point->GetPowerDB("Max RSSI"), -120.0);
}

TEST(TestPoint, TilesFromTwoThreadsCatchWhatOneSweepCatches) {
    WallScene scene;
    std::vector<BeamQUICK*> beams;
    for (int b = 0; b < 8; b++) {
        beams.push_back(SourceBeam(scene, "ap1"));
        WallScene::AddFan(beams.back(), CoordQUICK(0.5 * b, -0.3 * b, 0.0), 400, 30.0);
    }
    std::vector<BeamLimitPair> pairs = Seal(beams);
    std::vector<std::unique_ptr<TestPoint>> serial, tiled;
    for (int n = 0; n < 6; n++) {
        serial.push_back(PointAt(CoordQUICK(3.0 * n - 7.0, 2.0 * n - 4.0, 0.1)));
        tiled.push_back(PointAt(CoordQUICK(3.0 * n - 7.0, 2.0 * n - 4.0, 0.1)));
        serial.back()->updateFromBeams(pairs);
    }
    // Two tiles of beams reach the same points at once.
    std::vector<BeamLimitPair> first(pairs.begin(), pairs.begin() + 4);
    std::vector<BeamLimitPair> second(pairs.begin() + 4, pairs.end());
    auto sweep = [&tiled](std::vector<BeamLimitPair>* tile) {
        for (auto& point : tiled) point->updateFromBeams(*tile);
    };
    std::thread one(sweep, &first), two(sweep, &second);
    one.join();
    two.join();
    int caught = 0;
    for (size_t n = 0; n < serial.size(); n++) {
        EXPECT_EQ(tiled[n]->GetRayCount(), serial[n]->GetRayCount());
        EXPECT_DOUBLE_EQ(tiled[n]->GetPowerDB("ap1"), serial[n]->GetPowerDB("ap1"));
        caught += serial[n]->GetRayCount();
    }
    EXPECT_GT(caught, 6);
}

TEST(TestPoint, TaskListRunsEachTaskOnce) {
    WallScene scene;
    BeamQUICK* beam = SourceBeam(scene, "ap1");
    AddSourceRay(beam, CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 10.0);
    auto point = PointAt(CoordQUICK(3.0, 0.0, 0.0));
    PointRaysTask first(CoordQUICK(3.0, 0.0, 0.0), point.get(), 1.0);
    PointRaysTask second(CoordQUICK(3.0, 0.0, 0.0), point.get(), 1.0);
    beam->GetRays(first.rays, 0, 0);
    beam->GetRays(second.rays, 0, 0);
    std::vector<PointRaysTask*> tasks = {&first, nullptr, &second};
    EXPECT_TRUE(TestPoint::RaysToPointTaskList(tasks));
    EXPECT_TRUE(TestPoint::RaysToPointTaskList(tasks));
    EXPECT_TRUE(first.done && second.done);
    EXPECT_EQ(point->GetRayCount(), 2);
}

TEST(TestPoint, FilesCarryTheGainWithOppositeSigns) {
    TempDir dir;
    WallScene scene;
    BeamQUICK* beam = SourceBeam(scene, "ap1");
    AddSourceRay(beam, CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 20.0);
    AddSourceRay(beam, CoordQUICK(0.0, 0.2, 0.0), VectorQUICK(1.0, 0.0, 0.0), 20.0);
    auto point = PointAt(CoordQUICK(10.0, 0.0, 0.0), "rx1", 3.0);
    Sweep(*point, {beam});
    ASSERT_EQ(point->GetRayCount(), 2);
    const double model = beam->getRayFromSeq(0)->getPowerAtDistDB(10.0, 0.0);

    const std::string rays = dir.File("rays.csv");
    ASSERT_TRUE(point->Export(rays));
    auto rows = ReadCsv(rays);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].size(), 29u);
    EXPECT_EQ(rows[1][0], "ap1");
    EXPECT_EQ(rows[1][1], "rx1");
    EXPECT_EQ(rows[1][11], "Y");
    EXPECT_NEAR(Column(rows, 1, "ray_power"), model + 3.0, 1e-3);
    EXPECT_NEAR(Column(rows, 1, "end_x"), 20.0, 1e-9);

    const std::string sums = dir.File("sum.csv");
    {
        std::ofstream out(sums);
        TestPoint::writeSumHeader(out);
        EXPECT_TRUE(point->writeSumRayPowerLine(out));
    }
    rows = ReadCsv(sums);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_NEAR(Column(rows, 1, "sum_power"), model - 3.0, 1e-3);
    EXPECT_EQ(Column(rows, 1, "beamCount"), 1.0);
    EXPECT_EQ(Column(rows, 1, "end_x"), 10.0);

    auto empty = PointAt(CoordQUICK(-30.0, 0.0, 0.0), "rx2");
    std::ofstream out(dir.File("max.csv"));
    EXPECT_FALSE(empty->writeSumRayPowerLine(out));
    EXPECT_FALSE(empty->writeMaxLine(out));
    EXPECT_FALSE(point->Export(dir.File("missing/dir/rays.csv")));
}
