#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "geometry/Coordinates.h"
#include "propagation/MeshElement.h"
#include "propagation/MeshFromPointSet.h"
#include "propagation/MeshGroup.h"

namespace {

constexpr int COUNT = 1024;

// Reported as the time of one ray test.
benchmark::Counter PerTest() {
    return benchmark::Counter(
        COUNT, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

struct RaySet {
    std::vector<CoordQUICK> origins;
    std::vector<DirQUICK> dirs;
};

// COUNT rays from points above the plane z = 0, aimed at points of the square [lo, hi]^2 in
// it.
RaySet RaysAt(double lo, double hi, unsigned seed) {
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> start(-10.0, 10.0);
    std::uniform_real_distribution<double> target(lo, hi);
    RaySet rays;
    for (int i = 0; i < COUNT; ++i) {
        CoordQUICK origin(start(generator), start(generator), 5.0 + std::abs(start(generator)));
        DirQUICK dir;
        dir.CopyDiff(origin, CoordQUICK(target(generator), target(generator), 0.0));
        rays.origins.push_back(origin);
        rays.dirs.push_back(dir);
    }
    return rays;
}

// One triangle, (0,0,0), (4,0,0), (0,4,0): argument 0 aims every ray inside it, 1 beside it.
void TriangleDistance(benchmark::State& state) {
    MeshElement element(1, 0, 0, 0, 4, 0, 0, 0, 4, 0);
    RaySet rays = state.range(0) == 0 ? RaysAt(0.1, 1.9, 1) : RaysAt(4.1, 8.0, 2);
    for (auto _ : state) {
        int hits = 0;
        for (int i = 0; i < COUNT; ++i) {
            double t = 0.0;
            hits += element.distance(t, rays.origins[i], rays.dirs[i], -1.0, false);
        }
        benchmark::DoNotOptimize(hits);
    }
    state.counters["per_test"] = PerTest();
}
BENCHMARK(TriangleDistance)->Arg(0)->Arg(1);

// A 50-element group: a closed outline of 25 points on a circle of radius 4, extruded from
// z = -1 to 1. Rays start outside it and aim at its middle.
void GroupDistance(benchmark::State& state) {
    std::vector<Coordinates*> outline;
    for (int i = 0; i < 25; ++i) {
        const double a = 2.0 * 3.141592653589793 * i / 25.0;
        outline.push_back(new Coordinates(4.0 * std::cos(a), 4.0 * std::sin(a), 0.0));
    }
    std::vector<MeshGroup*> groups;
    CoordQUICK up(0, 0, 1);
    MeshFromPointSet(groups, 1, outline, up, -1.0, 2.0, -1.0);
    MeshGroup* group = groups[0];
    std::mt19937 generator(3);
    std::uniform_real_distribution<double> angle(0.0, 6.283185307179586);
    std::uniform_real_distribution<double> spread(-0.9, 0.9);
    RaySet rays;
    for (int i = 0; i < COUNT; ++i) {
        const double a = angle(generator);
        CoordQUICK origin(20.0 * std::cos(a), 20.0 * std::sin(a), spread(generator));
        DirQUICK dir;
        dir.CopyDiff(origin, CoordQUICK(spread(generator), spread(generator), spread(generator)));
        rays.origins.push_back(origin);
        rays.dirs.push_back(dir);
    }
    DirQUICK* normal = nullptr;
    for (auto _ : state) {
        double sum = 0.0;
        for (int i = 0; i < COUNT; ++i) {
            double t = -1.0;
            if (group->distance(t, rays.origins[i], rays.dirs[i], &normal, -1.0)) sum += t;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.counters["per_test"] = PerTest();
    delete normal;
    delete group;
    for (Coordinates* point : outline) delete point;
}
BENCHMARK(GroupDistance);

}  // namespace
