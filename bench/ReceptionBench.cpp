#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

#include "radiation/BeamLimitPair.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Ray.h"
#include "radiation/TestPoint.h"
#include "support/WallScene.h"

namespace {

constexpr int BEAMS = 40;
constexpr int RAYS_PER_BEAM = 1000;
constexpr double RAY_LENGTH = 60.0;

// BEAMS fans of rays from points on a circle of radius 10, with their boxes set, as the
// sweep sees them after a trace.
struct FanScene {
    FanScene() {
        for (int b = 0; b < BEAMS; b++) {
            BeamQUICK* beam = scene.AddBeam();
            beam->SetSourceName("ap");
            const double angle = 2.0 * M_PI * b / BEAMS;
            WallScene::AddFan(beam, CoordQUICK(10.0 * std::cos(angle), 10.0 * std::sin(angle), 1.5),
                              RAYS_PER_BEAM, RAY_LENGTH);
            for (Ray* ray : *beam->GetRaysVecp()) ray->SetSourcePowerDB(20.0);
            beam->CheckRayLimits();
            pairs.emplace_back(beam);
        }
    }
    WallScene scene;
    std::vector<BeamLimitPair> pairs;
};

// Points on a square grid of side 40 around the centre, at the height of the sources.
std::vector<std::unique_ptr<TestPoint>> GridOfPoints(int count) {
    std::vector<std::unique_ptr<TestPoint>> points;
    const int side = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int n = 0; n < count; n++) {
        auto point = std::make_unique<TestPoint>();
        point->Initialize();
        const double step = side > 1 ? 40.0 / (side - 1) : 0.0;
        point->SetCentre(-20.0 + step * (n % side) + 0.3, -20.0 + step * (n / side) + 0.3, 1.5);
        points.push_back(std::move(point));
    }
    return points;
}

// Every point sweeps every beam: the catch of the test points after a trace. Argument:
// the number of points. Items are rays offered to a point (beams times rays times points).
void SweepBeamsToPoints(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    FanScene fans;
    auto points = GridOfPoints(count);
    long caught = 0;
    for (auto _ : state) {
        caught = 0;
        for (auto& point : points) {
            point->ClearRays();
            point->updateFromBeams(fans.pairs);
            caught += point->GetRayCount();
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(BEAMS) * RAYS_PER_BEAM * count);
    state.counters["raysPerSecond"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * BEAMS * RAYS_PER_BEAM * count,
                           benchmark::Counter::kIsRate);
    state.counters["caughtRays"] = static_cast<double>(caught);
}
BENCHMARK(SweepBeamsToPoints)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();

// The reading of the caught rays into powers per source, as the results are extracted.
void PowerPerSource(benchmark::State& state) {
    FanScene fans;
    auto points = GridOfPoints(100);
    for (auto& point : points) point->updateFromBeams(fans.pairs);
    for (auto _ : state) {
        for (auto& point : points) {
            TestPoint::SourcePowers powers;
            point->GetMaxSourcePowerdB(powers);
            benchmark::DoNotOptimize(powers);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(points.size()));
}
BENCHMARK(PowerPerSource)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
