#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "documents/Document.h"
#include "framework/NexoBase.h"
#include "geometry/Array.h"
#include "geometry/Layout.h"
#include "radiation/Ray.h"
#include "radiation/RayLayout.h"
#include "radiation/TriRay.h"
#include "support/LogCapture.h"
#include "support/SampleNode.h"

namespace {

constexpr double PI = std::numbers::pi;

// Rays and triangles that a test made, deleted with it.
struct Made {
    std::vector<Ray*> rays;
    std::vector<TriRay*> triangles;
    ~Made() {
        for (Ray* ray : rays) delete ray;
        for (TriRay* triangle : triangles) delete triangle;
    }
};

std::unique_ptr<RayLayout> MakeLayout(eParamValue type, eParamValue shape, double gap = -1.0) {
    auto layout = std::make_unique<RayLayout>();
    layout->Initialize();
    layout->InitializeDefault();
    layout->SetParameterValue(PN_TYP, type);
    layout->SetParameterValue(PN_ARRSHA, shape);
    layout->SetParameterValue(PN_SIZ, 2.0);
    layout->SetParameterValue(PN_ANG, shape == PV_CIRCLEFULL ? 360.0 : 90.0);
    if (gap > 0.0) layout->SetParameterValue(PN_RAYGAP, gap);
    return layout;
}

// The parallel selection of the process, replaced while it lives.
class Selection {
public:
    explicit Selection(bool forceRays) : saved(NexoBase::parallelSelected) {
        ParallelSelect select(false);
        select.SetForced(parallelSetRays, forceRays);
        NexoBase::parallelSelected = select;
        NexoBase::SetNumProcs(4);
    }
    ~Selection() {
        NexoBase::parallelSelected = saved;
        NexoBase::SetNumProcs(-1);
    }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    ParallelSelect saved;
};

void ExpectSameRays(const std::vector<Ray*>& a, const std::vector<Ray*>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i]->GetBeamRayId(), b[i]->GetBeamRayId());
        EXPECT_TRUE(a[i]->Close(*b[i], 1e-12)) << i;
    }
}

}  // namespace

// The layout names the child it misses, checks its parameters once per change with a new
// array each time, and makes test rays only for a positive testCount.
TEST(RayLayout, ChecksAndTestRays) {
    LogCapture log;
    RayLayout bare;
    bare.Initialize();
    Made none;
    EXPECT_FALSE(bare.SetInitialRays(none.rays, nullptr));
    EXPECT_TRUE(log.Contains("point not found .. fail\n"));
    bare.InitializeDefault();
    bare.RemoveChild(bare.GetChildNamed("Direction"), true);
    EXPECT_FALSE(bare.checkParams());
    EXPECT_TRUE(log.Contains("Direction not found .. fail\n"));

    auto layout = MakeLayout(PV_PLANE, PV_SQUAREFULL);
    ASSERT_TRUE(layout->checkParams());
    Array* first = layout->GetArray();
    EXPECT_FALSE(layout->checkParams());
    EXPECT_EQ(layout->GetArray(), first);
    layout->SetParameterValue(PN_TCNT, 0.0);
    EXPECT_FALSE(layout->SetTestRays(none.rays));
    EXPECT_TRUE(none.rays.empty());
    layout->SetParameterValue(PN_TCNT, 4.0);
    ASSERT_TRUE(layout->SetTestRays(none.rays));
    EXPECT_EQ(none.rays.size(), 4u);
}

// One ray per direction of the sphere from the origin, numbered in position order, with
// the layout's wavelength and limit, the same whether made in one piece or in tasks of
// 30 on several workers. Each triangle carries its solid angle and its share of the total.
TEST(RayLayout, SphereRaysSerialAndParallel) {
    auto layout = MakeLayout(PV_POINT, PV_CIRCLEFULL, 4.0);
    layout->SetParameterValue(PN_LMDA, 0.125);
    layout->SetParameterValue(PN_TRLIM, 7);
    Made serial, parallel;
    {
        Selection oneWorker(false);
        ASSERT_TRUE(layout->SetInitialRays(serial.rays, &serial.triangles));
    }
    {
        Selection forced(true);
        ASSERT_TRUE(layout->SetInitialRays(parallel.rays, nullptr));
    }
    const double gap = 4.0 * PI / 180.0;
    size_t expected = 0;
    for (int i = 0; i <= 45; ++i) expected += std::max(1, int(2 * PI * std::sin(i * gap) / gap));
    ASSERT_EQ(serial.rays.size(), expected);
    ExpectSameRays(serial.rays, parallel.rays);
    for (size_t i = 0; i < expected; i += 97) {
        Ray* ray = serial.rays[i];
        EXPECT_EQ(ray->GetBeamRayId(), int(i));
        EXPECT_EQ(ray->origin.GetLength(), 0.0);
        EXPECT_EQ(ray->GetWavelength(), 0.125);
        EXPECT_EQ(ray->GetTraceLimit(), 7);
    }
    double intensities = 0.0;
    for (TriRay* triangle : serial.triangles) {
        EXPECT_EQ(triangle->power, triangle->solidAngle);
        intensities += triangle->intensity;
    }
    EXPECT_NEAR(intensities, 1.0, 1e-9);
    EXPECT_EQ(NexoBase::GetThreadCount(), 0);
}

// A plane layout launches parallel rays from its points along its direction; a point
// layout fans out from one place: both where the parent's layout puts them.
TEST(RayLayout, RaysFollowTheParentsPlace) {
    auto parent = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "source"));
    parent->InitLayout();
    Coordinates place(10.0, 0.0, 0.0);
    parent->GetLayout()->setToCentre(place);
    for (eParamValue type : {PV_PLANE, PV_POINT}) {
        auto layout = MakeLayout(type, PV_LINE);
        layout->SetParameterValue(PN_CNT, 3);
        layout->GetDirection()->SetValues(0.0, 1.0, 0.0);
        parent->AddChild(layout.get());
        Made made;
        ASSERT_TRUE(layout->SetInitialRays(made.rays, nullptr));
        ASSERT_EQ(made.rays.size(), 3u);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(made.rays[i]->origin.data[0], type == PV_PLANE ? 9.0 + i : 10.0, 1e-12);
            EXPECT_NEAR(made.rays[i]->GetLength(), 0.0001, 1e-15);
        }
        // Plane rays go along the direction; the point line spans 90 degrees in x-z.
        EXPECT_NEAR(made.rays[0]->dir.data[type == PV_PLANE ? 1 : 0],
                    type == PV_PLANE ? 1.0 : -std::sin(PI / 4.0), 1e-12);
        parent->RemoveChild(layout.get(), false);
    }
}

// A copy and a reloaded layout launch the same rays as the original.
TEST(RayLayout, CopyAndReloadKeepTheRays) {
    auto original = MakeLayout(PV_POINT, PV_CIRCLEFULL, 15.0);
    original->GetDirection()->SetValues(0.0, 1.0, 0.0);
    Made expected, copied, reloaded;
    ASSERT_TRUE(original->SetInitialRays(expected.rays, nullptr));
    RayLayout copy, loaded;
    copy.Initialize();
    ASSERT_TRUE(copy.Copy(original.get()));
    ASSERT_TRUE(copy.SetInitialRays(copied.rays, nullptr));
    ExpectSameRays(expected.rays, copied.rays);

    Document element;
    ASSERT_TRUE(original->ToXml(&element, false));
    loaded.Initialize();
    ASSERT_TRUE(loaded.FromXml(&element));
    ASSERT_TRUE(loaded.SetInitialRays(reloaded.rays, nullptr));
    ExpectSameRays(expected.rays, reloaded.rays);
    EXPECT_NEAR(loaded.GetDirection()->Get(1), 1.0, 1e-12);
}
