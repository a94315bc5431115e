#include <benchmark/benchmark.h>

#include <string>

#include "system/SystemToXML.h"
#include "system/SystemXmlDocument.h"

namespace {

// 1000 walls of two corners each, 20 access points and 1000 sample points.
e_System_* BuildLargeSystem() {
    e_System_* system = NewSystemIndoor(nullptr);
    for (int i = 0; i < 1000; ++i) {
        e_Barrier_* wall = NewBarrier(system);
        wall->height_upper = 3;
        wall->thickness = 0.2;
        wall->medium = 1 + i % 12;
        wall->vectors = NewVectorXYZ(i * 0.5, 0, 0);
        wall->vectors->next = NewVectorXYZ(i * 0.5, 10.25, 0);
    }
    for (int i = 0; i < 20; ++i) {
        std::string name = "AP " + std::to_string(i);
        SetVecXYZ(&NewAccessPoint(system, name.c_str())->location, i * 25.0, 5, 2.5);
    }
    for (int i = 0; i < 1000; ++i) {
        std::string name = "SP " + std::to_string(i);
        SetVecXYZ(&NewSamplePoint(system, name.c_str())->location, i * 0.5, 2.5, 1);
    }
    return system;
}

void BM_SystemToString(benchmark::State& state) {
    e_System_* system = BuildLargeSystem();
    std::string text;
    for (auto _ : state) {
        SystemToString(system, text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
    DeleteSystem(&system);
}
BENCHMARK(BM_SystemToString)->Unit(benchmark::kMillisecond);

void BM_SystemFromString(benchmark::State& state) {
    e_System_* source = BuildLargeSystem();
    std::string text;
    SystemToString(source, text);
    DeleteSystem(&source);
    for (auto _ : state) {
        SystemXmlDocument document;
        document.FromText(text, "BM_SystemFromString");
        e_System_* system = NewSystemIndoor(nullptr);
        benchmark::DoNotOptimize(ObjFromXML(system, system, document.RootElement()));
        state.PauseTiming();
        DeleteSystem(&system);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_SystemFromString)->Unit(benchmark::kMillisecond);

}  // namespace
