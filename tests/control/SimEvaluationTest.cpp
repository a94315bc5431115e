#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "control/SimEvaluation.h"
#include "documents/SimulationResults.h"
#include "framework/NexoBase.h"
#include "geometry/Coordinates.h"
#include "geometry/Layout.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/EMSource.h"
#include "radiation/TestPoint.h"
#include "support/TempDir.h"
#include "support/WaitUntil.h"
#include "support/WallScene.h"

namespace {

// Runs with every section available, on a fixed number of workers, and puts the process-wide
// selection back afterwards.
class ParallelRun {
public:
    explicit ParallelRun(bool parallel) : saved(NexoBase::parallelSelected), select(parallel) {
        NexoBase::SetNumProcs(4);
    }
    ~ParallelRun() {
        NexoBase::parallelSelected = saved;
        NexoBase::SetNumProcs(0);
    }
    ParallelSelect saved;
    ParallelSelect select;
};

// Points HOME and HOMEPATH at a temporary directory with a "Desktop" in it while it lives.
class TemporaryHome {
public:
    TemporaryHome() {
        std::filesystem::create_directories(dir.path / "Desktop");
        Keep("HOME", savedHome);
        Keep("HOMEPATH", savedHomePath);
        setenv("HOME", dir.path.c_str(), 1);
        setenv("HOMEPATH", dir.path.c_str(), 1);
    }
    ~TemporaryHome() {
        Restore("HOME", savedHome);
        Restore("HOMEPATH", savedHomePath);
    }
    std::string Desktop(const std::string& name) const {
        return (dir.path / "Desktop" / name).string();
    }
    TempDir dir;

private:
    static void Keep(const char* name, std::unique_ptr<std::string>& out) {
        const char* value = std::getenv(name);
        if (value != nullptr) out = std::make_unique<std::string>(value);
    }
    static void Restore(const char* name, const std::unique_ptr<std::string>& value) {
        if (value) {
            setenv(name, value->c_str(), 1);
        } else {
            unsetenv(name);
        }
    }
    std::unique_ptr<std::string> savedHome;
    std::unique_ptr<std::string> savedHomePath;
};

// A wall along the x axis at that y, 10 long, as the system builds it from two points.
void AddWallAtY(OpticElement* system, double y) {
    Coordinates from(-5.0, y, 0.0), to(5.0, y, 0.0);
    system->AddBarrier(std::vector<Coordinates*>{&from, &to});
}

// A small building: two walls, one source between them and one test point 3 m off.
OpticElement* SmallBuilding(SimEvaluation& evaluation) {
    OpticElement* system = evaluation.startNewSystem(13);
    if (system == nullptr) return nullptr;
    // Coarse rays and few hops keep the runs short.
    system->SetQuickParameterValue(PN_RAYGAP, 6.0);
    system->SetQuickParameterValue(PN_TRLIM, 2);
    AddWallAtY(system, -4.0);
    AddWallAtY(system, 4.0);
    Coordinates source(0.0, 0.0, 1.0), point(3.0, 0.0, 1.0);
    system->AddEMSource(&source);
    system->AddTestPoint(&point, false, "sample");
    return system;
}

TestPoint* PointNamed(const std::string& name) {
    for (TestPoint* point : TestPoint::GetTestPointList()) {
        if (point->TestName(name)) return point;
    }
    return nullptr;
}

// Starts the ray tracing and test-point stages and waits for the end of the run.
void RunStages(SimEvaluation& evaluation, bool threaded, bool parallel) {
    ParallelRun selection(parallel);
    evaluation.UpdateReq(evalReqRayTracing, true);
    evaluation.UpdateReq(evalReqTestPoints, true);
    ASSERT_TRUE(evaluation.UpdateStart(threaded, selection.select));
    ASSERT_TRUE(WaitUntil([&] { return evaluation.ProcessingComplete(); }, 60.0));
}

void ExpectNoRequests(const SimEvaluation& evaluation) {
    for (eEvalReq req : {evalReqRayTracing, evalReqTraceVolumes, evalReqFDTD, evalReqTestPoints,
                         evalReqRendering}) {
        EXPECT_FALSE(evaluation.GetReq(req)) << req;
    }
}

}  // namespace

TEST(SimEvaluation, RunWithoutDataEndsAtOnceWithoutResults) {
    SimEvaluation evaluation;
    EXPECT_DOUBLE_EQ(evaluation.GetProgress(), 1.0);
    EXPECT_TRUE(evaluation.ProcessingComplete());

    // Blocking: complete as soon as the call returns.
    RunStages(evaluation, false, false);
    EXPECT_EQ(evaluation.GetEvalResults(), nullptr);
    EXPECT_EQ(evaluation.GetEvalDocument(), nullptr);
    EXPECT_DOUBLE_EQ(evaluation.GetProgress(), 1.0);
    ExpectNoRequests(evaluation);

    // On a run thread: the thread is joined at the first complete answer.
    RunStages(evaluation, true, true);
    EXPECT_EQ(evaluation.GetEvalResults(), nullptr);
    EXPECT_DOUBLE_EQ(evaluation.GetProgress(), 1.0);
    EXPECT_TRUE(evaluation.ProcessingComplete());
}

TEST(SimEvaluation, StopBeforeTheFirstStageRunsNothing) {
    SimEvaluation evaluation;
    ASSERT_NE(evaluation.GetTopData(true), nullptr);
    // A new time asks for every stage but the solver's.
    EXPECT_TRUE(evaluation.SetTime(2.5));
    EXPECT_DOUBLE_EQ(SimObject::GetTime(), 2.5);
    EXPECT_TRUE(evaluation.GetReq(evalReqRayTracing));
    EXPECT_TRUE(evaluation.GetReq(evalReqTraceVolumes));
    EXPECT_FALSE(evaluation.GetReq(evalReqFDTD));
    evaluation.SetTime(0.0);
    evaluation.StopProcessing();
    EXPECT_TRUE(evaluation.UpdateSim());
    // The trace would have made the results' document first of all.
    EXPECT_EQ(evaluation.GetEvalDocument(), nullptr);
    EXPECT_DOUBLE_EQ(evaluation.GetProgress(), 1.0);
    ExpectNoRequests(evaluation);
}

TEST(SimEvaluation, SystemWithoutSourcesPassesTheLoopOnce) {
    SimEvaluation evaluation;
    EXPECT_EQ(evaluation.GetSystem(), nullptr);
    EXPECT_EQ(evaluation.startNewSystem(15), nullptr);
    OpticElement* system = evaluation.startNewSystem(13);
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(evaluation.GetSystem(), system);
    EXPECT_EQ(evaluation.GetSimObject(system->GetSimObjectID()), system);
    AddWallAtY(system, 4.0);
    RunStages(evaluation, false, true);
    EXPECT_EQ(evaluation.GetTraceLimit(), 0);
    EXPECT_EQ(evaluation.GetTracePasses(), 1);
    ASSERT_NE(evaluation.GetEvalResults(), nullptr);
    EXPECT_EQ(evaluation.GetEvalResults()->GetName(), "evaluated data");
    EXPECT_TRUE(static_cast<std::vector<EMRadiation*>&>(*evaluation.GetEvalResults()).empty());
}

TEST(SimEvaluation, SourceRaysReachTheTestPointAlikeInEveryMode) {
    std::vector<double> powers;
    std::vector<int> rays;
    for (bool threaded : {false, true}) {
        for (bool parallel : {false, true}) {
            SimEvaluation evaluation;
            ASSERT_NE(SmallBuilding(evaluation), nullptr);
            RunStages(evaluation, threaded, parallel);
            ASSERT_NE(evaluation.GetEvalResults(), nullptr);
            EXPECT_GT(evaluation.GetTraceLimit(), 0);
            EXPECT_GT(evaluation.GetTracePasses(), 1);
            TestPoint* point = PointNamed("sample");
            ASSERT_NE(point, nullptr);
            EXPECT_GT(point->GetRayCount(), 0);
            powers.push_back(point->GetPowerDB("Max RSSI"));
            rays.push_back(point->GetRayCount());
        }
    }
    EXPECT_GT(powers.front(), -120.0);
    for (double power : powers) EXPECT_DOUBLE_EQ(power, powers.front());
    for (int count : rays) EXPECT_EQ(count, rays.front());
}

TEST(SimEvaluation, CatchIsTiledInTwentyGroupsAtMost) {
    const std::vector<SimEvaluation::TileGroup> beams = SimEvaluation::TileGroups(45);
    ASSERT_EQ(beams.size(), 20u);
    for (size_t g = 0; g + 1 < beams.size(); g++) {
        EXPECT_EQ(beams[g].first, static_cast<int>(2 * g));
        EXPECT_EQ(beams[g].count, 2);
    }
    EXPECT_EQ(beams.back().first, 38);
    EXPECT_EQ(beams.back().count, 7);
    const std::vector<SimEvaluation::TileGroup> points = SimEvaluation::TileGroups(3);
    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[2].first, 2);
    EXPECT_EQ(points[2].count, 1);
    EXPECT_EQ(SimEvaluation::TestPointTaskCount(45, 3), 60);
    EXPECT_EQ(SimEvaluation::TestPointTaskCount(1000, 1000), 400);
    EXPECT_EQ(SimEvaluation::TestPointTaskCount(0, 3), 0);
    EXPECT_TRUE(SimEvaluation::TileGroups(0).empty());
}

TEST(SimEvaluation, ParallelCatchMatchesTheSerialOne) {
    // 45 beams of fans around the origin, offered to three points in tiles and in one task.
    WallScene scene;
    std::vector<BeamQUICK*> beams;
    for (int b = 0; b < 45; b++) {
        BeamQUICK* beam = scene.AddBeam();
        const double angle = 0.14 * b;
        WallScene::AddFan(beam, CoordQUICK(std::cos(angle), std::sin(angle), 1.0), 90, 30.0);
        beam->CheckRayLimits();
        beams.push_back(beam);
    }
    std::vector<std::unique_ptr<TestPoint>> owned;
    std::vector<TestPoint*> points;
    for (int p = 0; p < 3; p++) {
        owned.push_back(std::make_unique<TestPoint>());
        owned.back()->Initialize();
        owned.back()->SetCentre(4.0 + 3.0 * p, 1.0 - p, 1.0);
        points.push_back(owned.back().get());
    }
    SimEvaluation evaluation;
    std::vector<int> serial;
    {
        ParallelRun selection(false);
        NexoBase::parallelSelected = selection.select;
        ASSERT_TRUE(evaluation.BeamsToTestPoints(beams, points));
    }
    for (TestPoint* point : points) {
        serial.push_back(point->GetRayCount());
        point->ClearRays();
    }
    {
        ParallelRun selection(true);
        NexoBase::parallelSelected = selection.select;
        ASSERT_TRUE(evaluation.BeamsToTestPoints(beams, points));
    }
    for (int p = 0; p < 3; p++) {
        EXPECT_GT(serial[p], 0);
        EXPECT_EQ(points[p]->GetRayCount(), serial[p]);
    }
    std::vector<BeamQUICK*> none;
    EXPECT_TRUE(evaluation.BeamsToTestPoints(none, points));
}

TEST(SimEvaluation, SourceBetweenTwoWallsIsPlacedInTheirSharedVolume) {
    const int savedDefault = OpticElement::resources.GetDefaultVolumeId();
    Volume outer, inner, other;
    for (Volume* volume : {&outer, &inner, &other}) volume->Initialize();
    OpticElement::resources.SetDefaultVolumeId(outer.GetSimObjectID());
    // Walls at x = -1 and x = +1 bound the inner volume; a third wall further on does not.
    WallScene scene;
    Interface* left = scene.AddWall(CoordQUICK(-1, -2, 0), CoordQUICK(-1, 2, 0), 0.0, 3.0);
    Interface* right = scene.AddWall(CoordQUICK(1, -2, 0), CoordQUICK(1, 2, 0), 0.0, 3.0);
    Interface* beyond = scene.AddWall(CoordQUICK(3, -2, 0), CoordQUICK(3, 2, 0), 0.0, 3.0);
    left->AddVolume(&outer);
    left->AddVolume(&inner);
    right->AddVolume(&inner);
    right->AddVolume(&outer);
    beyond->AddVolume(&other);
    beyond->AddVolume(&outer);

    auto placed = [](double x, double y) {
        auto source = std::make_unique<EMSource>();
        source->Initialize();
        source->InitLayout();
        Coordinates centre(x, y, 1.0);
        source->GetLayout()->setToCentre(centre);
        source->UpdateLayout();
        return source;
    };
    auto between = placed(0.0, 0.0);
    auto outside = placed(0.0, 10.0);
    // Walls on both sides without a common inner volume: the surrounding one stays.
    auto apart = placed(2.0, 0.0);
    SimEvaluation evaluation;
    EXPECT_TRUE(evaluation.AssignSourcesToVolumes());
    EXPECT_EQ(between->GetVolume(), &inner);
    EXPECT_EQ(outside->GetVolume(), &outer);
    EXPECT_EQ(apart->GetVolume(), &outer);
    OpticElement::resources.SetDefaultVolumeId(savedDefault);
}

TEST(SimEvaluation, ExportWritesHeadersFilesPerPointAndRayAngles) {
    TemporaryHome home;
    EXPECT_EQ(SimEvaluation::ExportDirectory(), (home.dir.path / "Desktop").string());
    {
        // No run: only the two header lines of the all-rays file; two points of one name
        // share one file.
        SimEvaluation evaluation;
        TestPoint first, second;
        for (TestPoint* point : {&first, &second}) {
            point->Initialize();
            point->SetName("twin");
        }
        EXPECT_TRUE(evaluation.ExportSimResults());
        EXPECT_EQ(ReadLines(home.Desktop("Fenwave_export_allRays.csv")).size(), 2u);
        EXPECT_EQ(ReadLines(home.Desktop("Fenwave_export_rxMaxRayPower.csv")).front(),
                  "export Max rx ray power");
        EXPECT_EQ(ReadLines(home.Desktop("Fenwave_export_rxSumRayPower.csv")).front(),
                  "export Sum rx power");
        int perPoint = 0;
        for (const auto& entry : std::filesystem::directory_iterator(home.dir.path / "Desktop")) {
            perPoint += entry.path().filename() == "Fenwave_export_twin.csv";
        }
        EXPECT_EQ(perPoint, 1);
    }
    SimEvaluation evaluation;
    ASSERT_NE(SmallBuilding(evaluation), nullptr);
    RunStages(evaluation, false, false);
    EXPECT_TRUE(evaluation.ExportSimResults());
    const std::vector<std::string> lines = ReadLines(home.Desktop("Fenwave_export_allRays.csv"));
    ASSERT_GT(lines.size(), 2u);
    EXPECT_EQ(lines[1].substr(0, 12), "sourceName, ");
    bool sawY = false;
    for (size_t l = 2; l < lines.size(); l++) {
        std::istringstream fields(lines[l]);
        std::vector<std::string> cells;
        for (std::string cell; std::getline(fields, cell, ',');) cells.push_back(cell);
        ASSERT_EQ(cells.size(), 22u) << lines[l];
        const double dx = std::stod(cells[4]), dy = std::stod(cells[5]), dz = std::stod(cells[6]);
        if (std::abs(dx) < 1e-6 && std::abs(dy - 1.0) < 1e-6 && std::abs(dz) < 1e-6) {
            EXPECT_DOUBLE_EQ(std::stod(cells[10]), 90.0);
            sawY = true;
        }
        const double azimuth = std::stod(cells[10]);
        EXPECT_GE(azimuth, 0.0);
        EXPECT_LE(azimuth, 360.0);
    }
    EXPECT_TRUE(sawY);
    EXPECT_FALSE(ReadFile(home.Desktop("Fenwave_export_sample.csv")).empty());
}

TEST(SimEvaluation, DocumentsGoToFilesAndComeBack) {
    TemporaryHome home;
    const std::string path = home.dir.File("newSys1.xml");
    {
        SimEvaluation evaluation;
        ASSERT_NE(evaluation.startNewSystem(13), nullptr);
        std::vector<std::string> names;
        ASSERT_TRUE(evaluation.GetFilenames(names));
        EXPECT_EQ(names, std::vector<std::string>{path});
        EXPECT_TRUE(evaluation.ContainsFile(path));
        EXPECT_TRUE(evaluation.DocumentsToSourceFiles());
    }
    SimEvaluation evaluation;
    EXPECT_FALSE(evaluation.AddFile(home.dir.File("missing.xml")));
    EXPECT_FALSE(evaluation.ContainsFile(home.dir.File("missing.xml")));
    ASSERT_TRUE(evaluation.AddFile(path));
    EXPECT_FALSE(evaluation.AddFile(path));
    ASSERT_NE(evaluation.GetSystem(), nullptr);
    EXPECT_EQ(evaluation.GetSystem()->GetName(), "Building");
    EXPECT_NE(evaluation.GetSimDoc(path), nullptr);
    EXPECT_TRUE(evaluation.DataToDocuments());
    EXPECT_TRUE(evaluation.DocumentsToData());
    ASSERT_NE(evaluation.GetSystem(), nullptr);
    EXPECT_EQ(evaluation.GetSystem()->GetName(), "Building");

    // A document with neither data nor results goes; the loaded one stays.
    const std::string bare = home.dir.File("bare.xml");
    std::ofstream(bare) << "<?xml version=\"1.0\" ?>\n<SimulationDocument name=\"bare\"/>\n";
    ASSERT_TRUE(evaluation.AddFile(bare));
    EXPECT_TRUE(evaluation.ClearEmptySimDocs());
    EXPECT_FALSE(evaluation.ContainsFile(bare));
    EXPECT_TRUE(evaluation.ContainsFile(path));
    EXPECT_TRUE(evaluation.RemoveFile(path));
    EXPECT_FALSE(evaluation.ContainsFile(path));
    EXPECT_EQ(evaluation.GetTopData(false), nullptr);
    EXPECT_FALSE(evaluation.RemoveFile(path));
}
