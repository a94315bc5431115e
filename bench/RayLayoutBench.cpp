#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "framework/NexoBase.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "radiation/Ray.h"
#include "radiation/RayLayout.h"

namespace {

// A full sphere of directions at the spacing, in tenths of a degree.
std::unique_ptr<RayLayout> MakeSphere(int tenthsOfDegree) {
    auto layout = std::make_unique<RayLayout>();
    layout->Initialize();
    layout->InitializeDefault();
    layout->SetParameterValue(PN_TYP, PV_POINT);
    layout->SetParameterValue(PN_ARRSHA, PV_CIRCLEFULL);
    layout->SetParameterValue(PN_ANG, 360.0);
    layout->SetParameterValue(PN_RAYGAP, tenthsOfDegree / 10.0);
    layout->SetParameterValue(PN_LMDA, 0.125);
    return layout;
}

// The selection for the whole run: nothing parallel, or the ray section forced.
ParallelSelect Selection(bool parallel) {
    ParallelSelect select(false);
    select.SetForced(parallelSetRays, parallel);
    return select;
}

// SetRays from a sphere whose positions are cached already: the rays alone, as each beam
// makes them again. Deleting them is left out of the time.
void SetRaysSphere(benchmark::State& state, bool parallel) {
    const ParallelSelect saved = NexoBase::parallelSelected;
    NexoBase::parallelSelected = Selection(parallel);
    auto layout = MakeSphere(static_cast<int>(state.range(0)));
    std::vector<Ray*> rays;
    layout->SetInitialRays(rays, nullptr);
    size_t made = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (Ray* ray : rays) delete ray;
        rays.clear();
        state.ResumeTiming();
        layout->SetInitialRays(rays, nullptr);
        made += rays.size();
    }
    for (Ray* ray : rays) delete ray;
    state.SetItemsProcessed(static_cast<int64_t>(made));
    state.counters["rays"] = static_cast<double>(made) / static_cast<double>(state.iterations());
    NexoBase::parallelSelected = saved;
}

void SetRaysSerial(benchmark::State& state) { SetRaysSphere(state, false); }
void SetRaysParallel(benchmark::State& state) { SetRaysSphere(state, true); }

// The positions of the sphere made afresh; the time includes deleting the previous ones.
void SphereGenerate(benchmark::State& state) {
    auto layout = MakeSphere(static_cast<int>(state.range(0)));
    layout->checkParams();
    Array* array = layout->GetArray();
    size_t made = 0;
    for (auto _ : state) {
        array->SetPositionsChanged(true);
        std::vector<Coordinates*> positions;
        array->getPositions(positions, false, nullptr, nullptr, -1);
        made += positions.size();
    }
    state.SetItemsProcessed(static_cast<int64_t>(made));
}

}  // namespace

// Spacings of 0.5 and 0.1 degrees: about 165 thousand and 4.1 million rays.
BENCHMARK(SetRaysSerial)->Arg(5)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SetRaysParallel)->Arg(5)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SphereGenerate)->Arg(5)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
