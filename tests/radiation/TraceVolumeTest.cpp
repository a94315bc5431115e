#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "framework/Component.h"
#include "geometry/Coordinates.h"
#include "radiation/BeamLimitPair.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMSource.h"
#include "radiation/Ray.h"
#include "radiation/TestPoint.h"
#include "radiation/TraceVolume.h"
#include "support/TempDir.h"
#include "support/WallScene.h"

namespace {

// A trace volume as the child of an element, with a source beside it when asked.
struct Grid {
    explicit Grid(bool withSource) {
        holder.Initialize();
        volume = new TraceVolume();
        volume->Initialize();
        holder.AddChild(volume);
        if (!withSource) return;
        auto* source = new EMSource();
        source->Initialize();
        holder.AddChild(source);
    }
    Component holder;
    TraceVolume* volume = nullptr;
};

// A trace volume as the child of a fresh element, which makes its points.
struct ElementGrid {
    ElementGrid() {
        element.Initialize();
        volume = new TraceVolume();
        volume->Initialize();
        element.AddChild(volume);
    }
    TestPoint* PointOf(int i, int j, int k) {
        return dynamic_cast<TestPoint*>(SimObject::GetObjectGlobally(volume->GetPointId(i, j, k)));
    }
    OpticElement element;
    TraceVolume* volume = nullptr;
};

std::vector<std::string> Lines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

}  // namespace

TEST(TraceVolume, GridSizeAndContainment) {
    TraceVolume volume;
    volume.SetDim(4, 4, 0);
    EXPECT_EQ(volume.GetNz(), 1);
    volume.SetDim(-2, 0, 3);
    EXPECT_EQ(volume.GetNx(), -2);
    EXPECT_EQ(volume.GetNz(), 3);

    // A flat z axis takes any height; the other axes are open intervals.
    volume.SetLimits(0.0, 0.0, 1.5, 10.0, 10.0, 1.5);
    EXPECT_TRUE(volume.Contains(5.0, 5.0, -100.0));
    EXPECT_TRUE(volume.Contains(5.0, 5.0, 100.0));
    EXPECT_FALSE(volume.Contains(0.0, 5.0, 1.5));
    EXPECT_FALSE(volume.Contains(5.0, 10.0, 1.5));
    EXPECT_FALSE(volume.Contains(5.0, 11.0, 1.5));
}

TEST(TraceVolume, ExportShowsNoPowerOnEveryLine) {
    TempDir dir;
    Grid grid(true);
    grid.volume->SetLimits(0.0, 0.0, 0.0, 10.0, 20.0, 0.0);
    grid.volume->SetDim(2, 4, 1);
    ASSERT_TRUE(grid.volume->Export(dir.File("grid.csv")));
    std::vector<std::string> lines = Lines(dir.File("grid.csv"));
    ASSERT_EQ(lines.size(), 1u + 3u * 5u);
    EXPECT_EQ(lines[0], "x, y, z, power(linear), power(dB), power(dBm)");
    for (size_t n = 1; n < lines.size(); n++) {
        EXPECT_NE(lines[n].find(", 0, -120, -120"), std::string::npos) << lines[n];
    }
    // Corners of the cells, both ends included.
    EXPECT_EQ(lines[1], "0, 0, 0, 0, -120, -120");
    EXPECT_EQ(lines.back(), "10, 20, 0, 0, -120, -120");

    // One layer at the render height of a volume three cells deep.
    grid.volume->SetLimits(0.0, 0.0, 0.0, 10.0, 20.0, 3.0);
    grid.volume->SetDim(2, 4, 3);
    grid.volume->SetParameterValue(PN_TRACELAYHEIGHT, 2.5);
    ASSERT_TRUE(grid.volume->Export(dir.File("layer.csv")));
    lines = Lines(dir.File("layer.csv"));
    ASSERT_EQ(lines.size(), 1u + 3u * 5u);
    EXPECT_EQ(lines[1], "0, 0, 2, 0, -120, -120");
}

TEST(TraceVolume, ExportNeedsHeatmapAndSources) {
    TempDir dir;
    Grid grid(false);
    grid.volume->SetLimits(0.0, 0.0, 0.0, 10.0, 10.0, 0.0);
    grid.volume->SetDim(3, 3, 1);
    ASSERT_TRUE(grid.volume->Export(dir.File("empty.csv")));
    EXPECT_EQ(Lines(dir.File("empty.csv")).size(), 1u);
    // A path that cannot be opened is reported and the export still counts as done.
    EXPECT_TRUE(grid.volume->Export(dir.File("no/such/dir.csv")));

    grid.volume->SetParameterValue(PN_TRACERENDERAS, static_cast<eParamValue>(270));
    EXPECT_FALSE(grid.volume->Export(dir.File("paths.csv")));
    EXPECT_FALSE(std::ifstream(dir.File("paths.csv")).is_open());
}

TEST(TraceVolume, PointsAtCellCentresColouredByTheirPower) {
    ElementGrid grid;
    // A box 10 wide with a gap of 3 has 3 cells of width 10 / 3; 6 deep, 2 cells.
    const double gap = 3.0;
    grid.volume->SetLimits(0.0, 0.0, 1.0, 10.0, 6.0, 1.0);
    grid.volume->SetDim(static_cast<int>(10.0 / gap), static_cast<int>(6.0 / gap), 1);
    ASSERT_TRUE(grid.volume->InitTestPoints(&grid.element));
    EXPECT_EQ(grid.volume->GetPointIds().size(), 6u);
    EXPECT_EQ(grid.volume->GetPointId(3, 0, 0), -1);
    TestPoint* point = grid.PointOf(2, 1, 0);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->GetName(), "testPoint5");
    EXPECT_TRUE(point->IsInTraceVolume());
    ASSERT_NE(point->GetCentre(), nullptr);
    EXPECT_NEAR(point->GetCentre()->Get(0), 50.0 / 6.0, 1e-9);
    EXPECT_NEAR(point->GetCentre()->Get(1), 4.5, 1e-9);
    EXPECT_NEAR(point->GetCentre()->Get(2), 1.0, 1e-9);

    // One ray through the cell; the colour follows its power within the range.
    WallScene scene;
    BeamQUICK* beam = scene.AddBeam();
    Ray* ray = WallScene::AddRay(beam, CoordQUICK(0.0, 4.5, 1.0), VectorQUICK(1.0, 0.0, 0.0), 20.0);
    ray->SetSourcePowerDB(20.0);
    beam->CheckRayLimits();
    std::vector<BeamLimitPair> pairs = {BeamLimitPair(beam)};
    point->updateFromBeams(pairs);
    const double power = point->GetPowerDB("Max RSSI");
    ASSERT_GT(power, -120.0);
    grid.volume->SetPowerRange(power - 30.0, power + 10.0);
    grid.volume->SetColorScale(static_cast<eParamValue>(520));  // blue-red
    double x, y, z, r, g, b;
    ASSERT_TRUE(grid.volume->GetXYZRGBFromIJK(2, 1, 0, x, y, z, r, g, b));
    EXPECT_NEAR(x, 50.0 / 6.0, 1e-9);
    EXPECT_NEAR(r, 0.75, 1e-9);
    EXPECT_NEAR(g, 0.0, 1e-9);
    EXPECT_NEAR(b, 0.25, 1e-9);
    // A cell that caught nothing reads no power: the low end of the scale.
    Coordinates position, colour;
    ASSERT_TRUE(grid.volume->GetCoordColorFromIJK(0, 0, 0, position, colour));
    EXPECT_NEAR(position.Get(0), 10.0 / 6.0, 1e-9);
    EXPECT_EQ(colour.Get(2), 1.0);
    EXPECT_FALSE(grid.volume->GetXYZRGBFromIJK(3, 0, 0, x, y, z, r, g, b));
    point->ClearRays();
}

TEST(TraceVolume, GeographicGridLiesOnTheEarth) {
    ElementGrid grid;
    grid.element.SetParameterValue(PN_LONMIN, 10.0f);
    grid.element.SetParameterValue(PN_LONMAX, 10.2f);
    grid.element.SetParameterValue(PN_LATMIN, 50.0f);
    grid.element.SetParameterValue(PN_LATMAX, 50.1f);
    grid.volume->SetLimits(0.0, 0.0, 0.0, 0.5, 0.5, 0.0);
    grid.volume->SetDim(2, 2, 1);
    ASSERT_TRUE(grid.volume->InitTestPoints(&grid.element));
    ASSERT_EQ(grid.volume->GetPointIds().size(), 4u);
    TestPoint* point = grid.PointOf(1, 0, 0);
    ASSERT_NE(point, nullptr);
    Coordinates* c = point->GetCentre();
    const double x = c->Get(0), y = c->Get(1), z = c->Get(2);
    EXPECT_NEAR(std::sqrt(x * x + y * y + z * z), 6371000.0, 1e-3);
    EXPECT_NEAR(std::atan2(y, x) * 180.0 / M_PI, 10.15, 1e-4);
    EXPECT_NEAR(std::asin(z / 6371000.0) * 180.0 / M_PI, 50.025, 1e-4);

    // With a centre the grid is shifted into the scene's frame: that cell lands at the origin.
    grid.element.SetGPSToXYZCentre(Coordinates(x, y, z));
    ASSERT_TRUE(grid.volume->InitTestPoints(&grid.element));
    Coordinates* moved = grid.PointOf(1, 0, 0)->GetCentre();
    EXPECT_NEAR(moved->Get(0), 0.0, 1e-6);
    EXPECT_NEAR(moved->Get(1), 0.0, 1e-6);
    EXPECT_NEAR(moved->Get(2), 0.0, 1e-6);

    // Without geographic limits a narrow box makes no points.
    ElementGrid plain;
    plain.volume->SetLimits(0.0, 0.0, 0.0, 0.5, 0.5, 0.0);
    plain.volume->SetDim(2, 2, 1);
    EXPECT_TRUE(plain.volume->InitTestPoints(&plain.element));
    EXPECT_TRUE(plain.volume->GetPointIds().empty());
}
