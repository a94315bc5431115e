#include <benchmark/benchmark.h>

#include "framework/NexoBase.h"
#include "radiation/BeamQUICK.h"
#include "radiation/TraceRaysTask.h"
#include "support/WallScene.h"

namespace {

constexpr int RAYS = 1000;
constexpr double RAY_LENGTH = 500.0;

// Rays from the middle of a square of walls, traced to every wall by TraceRaysToFacesTask
// in as many slices as threads; each slice is one task of a parallel section. The walls'
// meshes are built before the clock starts. Argument 0: walls, argument 1: threads.
void TraceRaysToWalls(benchmark::State& state) {
    const int wallCount = static_cast<int>(state.range(0));
    const int threads = static_cast<int>(state.range(1));
    WallScene scene;
    scene.AddRandomWalls(wallCount, 100.0, 7u);
    BeamQUICK* beam = scene.AddBeam();
    WallScene::AddFan(beam, CoordQUICK(0.0, 0.0, 1.5), RAYS, RAY_LENGTH);
    NexoBase::SetNumProcs(threads);

    auto trace = [&]() {
        NexoBase::ProcessTask** tasks = NexoBase::NewTaskList(threads);
        for (int t = 0; t < threads; t++) {
            auto* slice =
                new TraceRaysTask(beam->GetBeamId(), beam->GetRaysVecp(), RAYS * t / threads,
                                  RAYS * (t + 1) / threads, &scene.walls);
            tasks[t] = new NexoBase::ProcessTask(slice, TraceRaysToFacesTask);
        }
        NexoBase::ThreadedProcessTasks(tasks, threads);
        NexoBase::DeleteTasks(tasks, threads);
    };
    trace();
    long hits = 0;
    for (auto _ : state) {
        state.PauseTiming();
        scene.ClearReceived();
        WallScene::ResetRays(beam, RAY_LENGTH);
        state.ResumeTiming();
        trace();
    }
    for (Ray* ray : *beam->GetRaysVecp()) hits += ray->endInterfaceId != -1;
    NexoBase::SetNumProcs(0);
    state.SetItemsProcessed(state.iterations() * RAYS);
    state.counters["hitRays"] = static_cast<double>(hits);
}
BENCHMARK(TraceRaysToWalls)
    ->ArgsProduct({{100, 1000, 10000}, {1, 2}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
