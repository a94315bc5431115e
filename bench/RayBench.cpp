#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "propagation/Volume.h"
#include "radiation/Ray.h"

namespace {

constexpr int COUNT = 1024;

// The distance loss of one ray at COUNT distances, with the volume's model read once.
void GetPowerLossFromDistDB(benchmark::State& state) {
    Volume volume;
    volume.Initialize();
    volume.SetParameterValue(PN_VOLPROPMDL, static_cast<eParamValue>(state.range(0)));
    volume.SetParameterValue(PN_VOLPROPEXP, 2.5);
    Ray ray;
    ray.Set(CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 100.0);
    ray.SetWavelength(0.125);
    ray.SetVolumeID(volume.GetSimObjectID());
    std::mt19937 generator(1);
    std::uniform_real_distribution<double> distance(0.5, 500.0);
    std::vector<double> distances(COUNT);
    for (double& d : distances) d = distance(generator);
    for (auto _ : state) {
        double sum = 0.0;
        for (double d : distances) sum += ray.GetPowerLossFromDistDB(d);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(GetPowerLossFromDistDB)->DenseRange(PV_FREESPACE, PV_WINNER_PLUS);

// The capsule test of one ray against COUNT points around it.
void PointIsClose(benchmark::State& state) {
    Ray ray;
    ray.Set(CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 1.0, 0.0), 10.0);
    std::mt19937 generator(2);
    std::uniform_real_distribution<double> value(-2.0, 10.0);
    std::vector<CoordQUICK> points;
    for (int i = 0; i < COUNT; ++i) {
        points.emplace_back(value(generator), value(generator), value(generator) / 4.0);
    }
    for (auto _ : state) {
        int caught = 0;
        for (const CoordQUICK& p : points) caught += ray.PointIsClose(p, 1.0) ? 1 : 0;
        benchmark::DoNotOptimize(caught);
    }
    state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(PointIsClose);

}  // namespace
