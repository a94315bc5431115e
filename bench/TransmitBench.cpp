#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "propagation/Interface.h"
#include "propagation/TransmitManage.h"
#include "radiation/Medium.h"
#include "radiation/Ray.h"

namespace {

constexpr int HITS = 1024;

// HITS rays ending on a thin concrete wall in the plane x = 0 at incidences from 1 to 80
// degrees; each hit makes one reflected and one transmitted child.
void TransmitRaysPerHit(benchmark::State& state) {
    OpticElement::resources.init();
    Medium* air = OpticElement::resources.GetMedium("Vacuum/ air");
    Interface face;
    face.Initialize();
    face.SetParameterValue(PN_TYP, PV_TYPE_POINTPOINTHEIGHT);
    face.SetParameterValue(PN_MED, std::string("Concrete (ITU)"));
    face.SetParameterValue(PN_THICKNESS, 0.2);
    face.SetParameterValue(PN_BARREFMDL, PV_REFLECT_SPECULAR);
    face.SetParameterValue(PN_BARLOSMDL, static_cast<eParamValue>(state.range(0)));

    std::mt19937 generator(3);
    std::uniform_real_distribution<double> incidence(1.0, 80.0);
    std::vector<Ray> rays(HITS);
    TransmitTask task;
    task.face = &face;
    task.mediumIn = air;
    task.mediumOut = air;
    for (int i = 0; i < HITS; ++i) {
        const double a = incidence(generator) * 3.141592653589793 / 180.0;
        Ray& ray = rays[i];
        ray.Set(CoordQUICK(-std::cos(a), -std::sin(a), 0.0),
                VectorQUICK(std::cos(a), std::sin(a), 0.0), 1.0);
        ray.SetWavelength(0.125);
        ray.SetSourcePowerDB(20.0);
        ray.hitNormal.SetValues(1.0, 0.0, 0.0);
        task.rays[i] = &ray;
    }
    task.reflected.reserve(HITS);
    task.transmitted.reserve(HITS);
    for (auto _ : state) {
        TransmitManage::TransmitRays(task);
        state.PauseTiming();
        for (Ray* child : task.reflected) delete child;
        for (Ray* child : task.transmitted) delete child;
        task.reflected.clear();
        task.transmitted.clear();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * HITS);
}
BENCHMARK(TransmitRaysPerHit)->Arg(PV_LOSS_THIN)->Arg(PV_LOSS_THICK)->Arg(PV_LOSS_DB);

}  // namespace
