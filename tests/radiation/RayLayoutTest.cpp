#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "documents/Document.h"
#include "framework/NexoBase.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Layout.h"
#include "radiation/Ray.h"
#include "radiation/RayLayout.h"
#include "radiation/TriRay.h"
#include "support/LogCapture.h"
#include "support/SampleNode.h"

namespace {

constexpr double PI = std::numbers::pi;

// Deletes what a test made.
template <typename T>
struct Owned {
    std::vector<T*> items;
    ~Owned() {
        for (T* item : items) delete item;
    }
};

std::unique_ptr<RayLayout> MakeLayout(eParamValue type, eParamValue shape) {
    auto layout = std::make_unique<RayLayout>();
    layout->Initialize();
    layout->InitializeDefault();
    layout->SetParameterValue(PN_TYP, type);
    layout->SetParameterValue(PN_ARRSHA, shape);
    return layout;
}

// A full sphere at the given spacing in degrees, launched with wavelength and limits.
std::unique_ptr<RayLayout> MakeSphere(double gapDegrees) {
    auto layout = MakeLayout(PV_POINT, PV_CIRCLEFULL);
    layout->SetParameterValue(PN_ANG, 360.0);
    layout->SetParameterValue(PN_RAYGAP, gapDegrees);
    layout->SetParameterValue(PN_LMDA, 0.125);
    layout->SetParameterValue(PN_TRLIM, 7);
    layout->SetParameterValue(PN_REFLIM, 3);
    layout->SetParameterValue(PN_TRANLIM, 2);
    return layout;
}

// Forces the ray-making section to go parallel on four workers while it lives.
class ForcedParallel {
public:
    ForcedParallel() {
        NexoBase::SetNumProcs(4);
        NexoBase::parallelSelected.SetForced(parallelSetRays, true);
    }
    ~ForcedParallel() {
        NexoBase::parallelSelected.SetForced(parallelSetRays, false);
        NexoBase::SetNumProcs(-1);
    }
    ForcedParallel(const ForcedParallel&) = delete;
    ForcedParallel& operator=(const ForcedParallel&) = delete;
};

// No section may go parallel while it lives.
class SerialOnly {
public:
    SerialOnly() : saved(NexoBase::parallelSelected) {
        NexoBase::parallelSelected = ParallelSelect(false);
    }
    ~SerialOnly() { NexoBase::parallelSelected = saved; }
    SerialOnly(const SerialOnly&) = delete;
    SerialOnly& operator=(const SerialOnly&) = delete;

private:
    ParallelSelect saved;
};

void ExpectSameRays(const std::vector<Ray*>& a, const std::vector<Ray*>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i]->GetBeamRayId(), b[i]->GetBeamRayId());
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(a[i]->origin.data[k], b[i]->origin.data[k]);
            EXPECT_EQ(a[i]->dir.data[k], b[i]->dir.data[k]);
        }
    }
}

}  // namespace

// The layout needs its "Point" and "Direction" children, says which one it misses, and
// checks its parameters once per change, making a new array each time.
TEST(RayLayout, CheckParamsOncePerChange) {
    LogCapture log;
    RayLayout bare;
    bare.Initialize();
    EXPECT_FALSE(bare.checkParams());
    EXPECT_TRUE(log.Contains("point not found .. fail\n"));
    Owned<Ray> none;
    EXPECT_FALSE(bare.SetInitialRays(none.items, nullptr));
    EXPECT_TRUE(none.items.empty());

    auto noDirection = std::make_unique<RayLayout>();
    noDirection->Initialize();
    noDirection->InitializeDefault();
    noDirection->RemoveChild(noDirection->GetChildNamed("Direction"), true);
    EXPECT_FALSE(noDirection->checkParams());
    EXPECT_TRUE(log.Contains("Direction not found .. fail\n"));

    auto layout = MakeLayout(PV_POINT, PV_SQUAREFULL);
    EXPECT_NE(layout->GetParameterp("Shape"), nullptr);
    layout->SetParameterValue(PN_CNT, 9);
    ASSERT_TRUE(layout->checkParams());
    Array* first = layout->GetArray();
    ASSERT_NE(first, nullptr);
    first->checkParams();
    EXPECT_EQ(first->GetArrayShape(), PV_SQUAREFULL);
    EXPECT_FALSE(layout->checkParams());
    EXPECT_EQ(layout->GetArray(), first);
    layout->SetParameterValue(PN_CNT, 16);
    EXPECT_TRUE(layout->checkParams());
    first = layout->GetArray();
    first->checkParams();
    EXPECT_EQ(first->GetCount(), 16);
}

// One ray per direction of the sphere, numbered in position order, from the origin, with
// the layout's wavelength and limits; each triangle carries its solid angle as power and
// its share of the total as intensity.
TEST(RayLayout, SetRaysFromASphere) {
    auto layout = MakeSphere(10.0);
    Owned<Ray> rays;
    Owned<TriRay> triangles;
    ASSERT_TRUE(layout->SetInitialRays(rays.items, &triangles.items));
    // Rings every 10 degrees from pole to pole, trunc(2 pi sin(theta) / gap) on each.
    const double gap = 10.0 * PI / 180.0;
    int expected = 0;
    for (int i = 0; i <= 18; ++i) expected += std::max(1, int(2.0 * PI * std::sin(i * gap) / gap));
    ASSERT_EQ(rays.items.size(), size_t(expected));
    std::vector<Coordinates*> positions;
    layout->GetArray()->getPositions(positions, false, nullptr, nullptr, -1);
    for (size_t i = 0; i < rays.items.size(); ++i) {
        Ray* ray = rays.items[i];
        EXPECT_EQ(ray->GetBeamRayId(), int(i));
        EXPECT_EQ(ray->origin.GetLength(), 0.0);
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(ray->dir.data[k], positions[i]->Get(k), 1e-12);
        EXPECT_EQ(ray->GetWavelength(), 0.125);
        EXPECT_EQ(ray->GetTraceLimit(), 7);
        EXPECT_EQ(ray->GetReflectLimit(), 3);
        EXPECT_EQ(ray->GetTransmitLimit(), 2);
    }
    ASSERT_FALSE(triangles.items.empty());
    double intensities = 0.0;
    for (TriRay* triangle : triangles.items) {
        EXPECT_EQ(triangle->power, triangle->solidAngle);
        EXPECT_LT(triangle->rayC, expected);
        intensities += triangle->intensity;
    }
    EXPECT_NEAR(intensities, 1.0, 1e-12);
}

// Above 200 positions the rays are made in tasks of 30 on several workers; the rays and
// their ids are the same as when made in one piece.
TEST(RayLayout, SerialAndParallelRaysAgree) {
    auto layout = MakeSphere(4.0);
    Owned<Ray> serial, parallel;
    {
        SerialOnly oneWorker;
        ASSERT_TRUE(layout->SetInitialRays(serial.items, nullptr));
    }
    {
        ForcedParallel forced;
        ASSERT_TRUE(layout->SetInitialRays(parallel.items, nullptr));
    }
    ASSERT_GT(serial.items.size(), 200u);
    ExpectSameRays(serial.items, parallel.items);
    EXPECT_EQ(NexoBase::GetThreadCount(), 0);
}

// A plane layout launches parallel rays from its points along its direction, and a point
// layout fans out from one place: both where the parent's layout puts them.
TEST(RayLayout, RaysFollowTheParentsPlace) {
    auto parent = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "source"));
    parent->InitLayout();
    Coordinates place(10.0, 0.0, 0.0);
    parent->GetLayout()->setToCentre(place);

    for (eParamValue type : {PV_PLANE, PV_POINT}) {
        auto layout = MakeLayout(type, PV_LINE);
        layout->SetParameterValue(PN_SIZ, 2.0);
        layout->SetParameterValue(PN_ANG, 90.0);
        layout->SetParameterValue(PN_CNT, 3);
        layout->GetDirection()->SetValues(0.0, 1.0, 0.0);
        parent->AddChild(layout.get());
        Owned<Ray> rays;
        ASSERT_TRUE(layout->SetInitialRays(rays.items, nullptr));
        ASSERT_EQ(rays.items.size(), 3u);
        for (int i = 0; i < 3; ++i) {
            Ray* ray = rays.items[i];
            const double x = type == PV_PLANE ? 9.0 + i : 10.0;
            EXPECT_NEAR(ray->origin.data[0], x, 1e-12);
            EXPECT_NEAR(ray->GetLength(), 0.0001, 1e-15);
            if (type == PV_PLANE) {
                EXPECT_NEAR(ray->dir.data[1], 1.0, 1e-12);
            }
        }
        // The point line spans 90 degrees in the x-z plane.
        if (type == PV_POINT) {
            EXPECT_NEAR(rays.items[0]->dir.data[0], -std::sin(PI / 4.0), 1e-12);
        }
        parent->RemoveChild(layout.get(), false);
    }
}

// Test rays come from testCount, and there are none while it is not positive.
TEST(RayLayout, TestRays) {
    auto layout = MakeLayout(PV_PLANE, PV_SQUAREFULL);
    layout->SetParameterValue(PN_SIZ, 1.0);
    Owned<Ray> rays;
    layout->SetParameterValue(PN_TCNT, 0.0);
    EXPECT_FALSE(layout->SetTestRays(rays.items));
    EXPECT_TRUE(rays.items.empty());
    layout->SetParameterValue(PN_TCNT, 4.0);
    ASSERT_TRUE(layout->SetTestRays(rays.items));
    EXPECT_EQ(rays.items.size(), 4u);
}

// A copy and a reloaded layout launch the same rays as the original.
TEST(RayLayout, CopyAndReloadKeepTheRays) {
    auto original = MakeSphere(15.0);
    original->GetDirection()->SetValues(0.0, 1.0, 0.0);
    Owned<Ray> expected;
    ASSERT_TRUE(original->SetInitialRays(expected.items, nullptr));

    RayLayout copy;
    copy.Initialize();
    ASSERT_TRUE(copy.Copy(original.get()));
    Owned<Ray> copied;
    ASSERT_TRUE(copy.SetInitialRays(copied.items, nullptr));
    ExpectSameRays(expected.items, copied.items);
    EXPECT_NEAR(copy.GetDirection()->Get(1), 1.0, 1e-12);

    Document element;
    ASSERT_TRUE(original->ToXml(&element, false));
    RayLayout loaded;
    loaded.Initialize();
    ASSERT_TRUE(loaded.FromXml(&element));
    Owned<Ray> reloaded;
    ASSERT_TRUE(loaded.SetInitialRays(reloaded.items, nullptr));
    ExpectSameRays(expected.items, reloaded.items);
    EXPECT_NEAR(loaded.GetDirection()->Get(1), 1.0, 1e-12);
}
