#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "framework/Component.h"
#include "geometry/Coordinates.h"
#include "radiation/EMSource.h"
#include "radiation/TraceVolume.h"
#include "support/TempDir.h"

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
