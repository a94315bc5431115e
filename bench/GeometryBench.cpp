#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Rotation.h"
#include "geometry/Transformation.h"
#include "geometry/Translation.h"
#include "geometry/VectorQUICK.h"

namespace {

constexpr int COUNT = 1024;

std::vector<VectorQUICK> RandomVectors(unsigned seed) {
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> value(-10.0, 10.0);
    std::vector<VectorQUICK> vectors;
    for (int i = 0; i < COUNT; ++i) {
        vectors.emplace_back(value(generator), value(generator), value(generator));
    }
    return vectors;
}

void VectorQUICKDot(benchmark::State& state) {
    const std::vector<VectorQUICK> a = RandomVectors(1), b = RandomVectors(2);
    for (auto _ : state) {
        double sum = 0.0;
        for (int i = 0; i < COUNT; ++i) sum += a[i].Dot(b[i]);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(VectorQUICKDot);

void VectorQUICKCross(benchmark::State& state) {
    const std::vector<VectorQUICK> a = RandomVectors(1), b = RandomVectors(2);
    std::vector<VectorQUICK> out(COUNT, VectorQUICK(3));
    for (auto _ : state) {
        for (int i = 0; i < COUNT; ++i) out[i].SetCross(a[i], b[i]);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(VectorQUICKCross);

void VectorQUICKNormalize(benchmark::State& state) {
    const std::vector<VectorQUICK> a = RandomVectors(1);
    std::vector<VectorQUICK> out(a);
    for (auto _ : state) {
        for (int i = 0; i < COUNT; ++i) {
            out[i] = a[i];
            out[i].Normalize();
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(VectorQUICKNormalize);

// A turn about a tilted axis followed by a move, as a layout builds it.
Transformation MakeTransformation() {
    Rotation rotation(3);
    rotation.Initialize();
    rotation.GetDir()->SetValues(0.3, 0.4, 1.0);
    rotation.GetCoord()->SetValues(1.0, 2.0, 3.0);
    rotation.SetStartAngle(37.0);
    rotation.buildTrans();
    Translation translation(3);
    translation.Initialize();
    translation.GetCoord()->SetValues(5.0, -2.0, 0.5);
    translation.buildTrans();
    Transformation transformation(3);
    transformation.Initialize();
    transformation.Add(rotation);
    transformation.Add(translation);
    return transformation;
}

void TransformationTransformCoordinates(benchmark::State& state) {
    Transformation transformation = MakeTransformation();
    Coordinates point(1.0, 2.0, 3.0), out(3);
    for (auto _ : state) {
        transformation.Transform(point, out);
        benchmark::DoNotOptimize(out.Get(0, true));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TransformationTransformCoordinates);

void TransformationTransformDoubles(benchmark::State& state) {
    Transformation transformation = MakeTransformation();
    for (auto _ : state) {
        double x = 1.0, y = 2.0, z = 3.0;
        transformation.Transform(x, y, z);
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(y);
        benchmark::DoNotOptimize(z);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TransformationTransformDoubles);

}  // namespace
