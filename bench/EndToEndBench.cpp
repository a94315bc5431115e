// The example office end to end in one process: load into an evaluation, trace, extract the
// signals; serial and parallel, at ray gaps of 1 and 0.25 degrees. Reports the rays traced
// per second and the peak resident memory of the process.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include "control/SimEvaluation.h"
#include "documents/SimulationResults.h"
#include "radiation/EMRadiation.h"
#include "support/SystemScene.h"
#include "system/LibInterface.h"
#include "system/SystemBuilder.h"
#include "system/System_.h"

namespace {

// Rays of the radiation the run collected.
long RaysTraced(SimEvaluation* evaluation) {
    SimulationResults* results = evaluation->GetEvalResults();
    if (results == nullptr) return 0;
    long rays = 0;
    for (EMRadiation* radiation : static_cast<std::vector<EMRadiation*>&>(*results)) {
        rays += radiation->GetRayCount();
    }
    return rays;
}

double PeakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024.0;
}

void BM_OfficeEndToEnd(benchmark::State& state) {
    const bool parallel = state.range(0) != 0;
    const double rayGap = state.range(1) / 100.0;
    long rays = 0;
    for (auto _ : state) {
        e_System_* office = SystemBuilder().SystemFromFile(ExampleFile("office.xml"));
        office->rayGap = rayGap;
        office->held = true;
        LibInterface lib;
        lib.SetSystem(new System_(office));
        lib.BeginUpdate(false, parallel);
        rays += RaysTraced(lib.GetEvaluation());
        lib.ExtractResults();
    }
    state.counters["rays/s"] =
        benchmark::Counter(static_cast<double>(rays), benchmark::Counter::kIsRate);
    state.counters["peakMB"] = PeakMegabytes();
}

}  // namespace

BENCHMARK(BM_OfficeEndToEnd)
    ->ArgNames({"parallel", "gap%"})
    ->Args({0, 100})
    ->Args({1, 100})
    ->Args({0, 25})
    ->Args({1, 25})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
