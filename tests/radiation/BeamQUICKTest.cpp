#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "propagation/Volume.h"
#include "radiation/BeamLimitPair.h"
#include "radiation/BeamQUICK.h"

namespace {

// A ray with the given id from (x, y, 0) to (x, y + 1, 0) whose end phase is phase.
Ray* RayEndingAt(int id, double x, double y, double phase = 0.0) {
    Ray* ray = new Ray();
    ray->Set(CoordQUICK(x, y - 1.0, 0.0), VectorQUICK(0.0, 1.0, 0.0), 1.0);
    ray->SetWavelength(1.0);
    ray->SetStartPhase(phase - 1.0);
    ray->SetPower(1.0);
    ray->SetBeamRayId(id);
    return ray;
}

// Rays 0, 1, 2 ending at (0, 0), (1, 0), (0, 1), carrying the field 2x + 3y as phase, and
// the triangle of the three with power 1.
void FillTriangle(BeamQUICK& beam) {
    beam.AddRay(RayEndingAt(0, 0.0, 0.0, 0.0));
    beam.AddRay(RayEndingAt(1, 1.0, 0.0, 2.0));
    beam.AddRay(RayEndingAt(2, 0.0, 1.0, 3.0));
    TriRay triangle(0, 1, 2);
    triangle.power = 1.0;
    std::vector<TriRay*> list{&triangle};
    beam.AddTriRays(&list);
}

}  // namespace

TEST(BeamTable, BeamsAreFoundByIdUntilDeleted) {
    auto* first = new BeamQUICK();
    auto* second = new BeamQUICK();
    const int id = first->GetBeamId();
    EXPECT_EQ(GETBEAM(id), first);
    EXPECT_TRUE(DELETEBEAM(id));
    EXPECT_EQ(GETBEAM(id), nullptr);
    EXPECT_FALSE(DELETEBEAM(id));

    second->AddRay(RayEndingAt(0, 0.0, 0.0));
    const int secondId = second->GetBeamId();
    EXPECT_TRUE(DELETEALLBEAMS());
    EXPECT_EQ(GETBEAM(secondId), nullptr);
}

TEST(BeamContainers, RayIdsCollideIntoTheLastKeyPlusOne) {
    BeamQUICK beam;
    beam.AddRay(RayEndingAt(5, 0.0, 0.0));
    beam.AddRay(RayEndingAt(2, 0.0, 0.0));
    Ray* collider = RayEndingAt(2, 0.0, 0.0);
    beam.AddRay(collider);
    EXPECT_EQ(collider->GetBeamRayId(), 6);
    EXPECT_FALSE(beam.AddRay(collider));  // already held
    Ray* unnumbered = RayEndingAt(-1, 0.0, 0.0);
    beam.AddRay(unnumbered);
    EXPECT_EQ(unnumbered->GetBeamRayId(), -1);

    // In key order: -1, 2, 5, 6.
    EXPECT_EQ(beam.getRayFromSeq(0), unnumbered);
    EXPECT_EQ(beam.getRayFromSeq(3), collider);
    EXPECT_EQ(beam.getRayFromSeq(4), nullptr);
    std::vector<Ray*> some;
    EXPECT_TRUE(beam.GetRays(some, 2, 3));
    EXPECT_EQ(some, (std::vector<Ray*>{collider, unnumbered}));
    EXPECT_FALSE(beam.GetRays(some, 3, 4));

    // A ray deleted by hand leaves the beam, which then does not delete it again.
    delete collider;
    EXPECT_EQ(beam.getRayFromId(6), nullptr);
    EXPECT_EQ(beam.GetRaysCount(), 3);

    // Test rays: a new id takes the last key and so replaces that entry.
    Ray* test1 = RayEndingAt(9, 0.0, 0.0);
    Ray* test2 = RayEndingAt(4, 0.0, 0.0);
    beam.AddTestRay(test1);
    EXPECT_EQ(test1->GetBeamRayId(), 0);
    beam.AddTestRay(test2);
    EXPECT_EQ(test2->GetBeamRayId(), 0);
    EXPECT_EQ(beam.GetTestRaysp()->size(), 1u);

    auto* volume = new Volume();
    volume->Initialize();
    beam.SetVolume(volume);
    EXPECT_EQ(beam.getRayFromId(5)->GetVolumeID(), volume->GetSimObjectID());
    delete volume;
}

TEST(BeamContainers, TrianglesCopyAndBox) {
    BeamQUICK beam;
    EXPECT_FALSE(beam.AddTriRays(nullptr));
    FillTriangle(beam);
    beam.AddRay(RayEndingAt(3, 1.0, 1.0));
    TriRay first(0, 1, 2), second(1, 3, 2);
    std::vector<TriRay*> both{&first, &second};
    EXPECT_TRUE(beam.AddTriRays(&both));
    EXPECT_NE(beam.GetTriRaysp()->back(), &second);
    EXPECT_EQ(beam.getTriRays(2).size(), 2u);
    EXPECT_EQ(beam.getConnectedRays(1), (std::vector<int>{0, 2, 3}));

    // The box takes in every origin and end.
    EXPECT_TRUE(beam.CheckRayLimits());
    const BeamLimitPair pair(&beam);
    EXPECT_EQ(pair.limits.yMin, -1.0);
    EXPECT_EQ(pair.limits.yMax, 1.0);

    BeamQUICK other;
    other.Copy(beam);
    ASSERT_EQ(other.GetRaysCount(), 4);
    Ray* copied = other.getRayFromId(3);
    EXPECT_NE(copied, beam.getRayFromId(3));
    EXPECT_TRUE(copied->equals(beam.getRayFromId(3)));
    EXPECT_EQ(copied->beamId, other.GetBeamId());
}

TEST(BeamField, PointInTriangleAndInterpolationOfALinearField) {
    BeamQUICK beam;
    FillTriangle(beam);
    TriRay* triangle = beam.GetTriRaysp()->front();
    Coordinates corner(1.0, 0.0, 0.0), inside(0.25, 0.25, 0.0), outside(0.8, 0.8, 0.0),
        edge(0.5, 0.5, 0.0);
    EXPECT_TRUE(BeamQUICK::pointInTriRay(corner, &beam, triangle));
    EXPECT_TRUE(BeamQUICK::pointInTriRay(inside, &beam, triangle));
    EXPECT_TRUE(BeamQUICK::pointInTriRay(edge, &beam, triangle));
    EXPECT_FALSE(BeamQUICK::pointInTriRay(outside, &beam, triangle));

    double value = 0.0;
    // Flat: weights from sub-triangle areas, near the linear value (angles carry the
    // system's small degree factor).
    ASSERT_TRUE(beam.InterpolatePhaseFlat(inside, value));
    EXPECT_NEAR(value, 2 * 0.25 + 3 * 0.25, 1e-3);
    EXPECT_FALSE(beam.InterpolatePhaseFlat(outside, value));
    EXPECT_FALSE(beam.InterpolatePhaseSmooth(inside, value));  // no gradients yet

    // With neighbours along the axes the fit of a linear field is exact. Midway along the
    // edge from ray 0 to ray 1 the two ends weigh equally and ray 2 not at all.
    ASSERT_TRUE(beam.EvaluateGradients());
    Coordinates* gradient = beam.GetPhaseGradient(0);
    ASSERT_NE(gradient, nullptr);
    EXPECT_NEAR(gradient->Get(0), 2.0, 1e-12);
    EXPECT_NEAR(gradient->Get(1), 3.0, 1e-12);
    EXPECT_NEAR(beam.GetPhaseGradient(1)->Get(0), 2.0, 1e-12);
    Coordinates midEdge(0.5, 0.0, 0.0);
    ASSERT_TRUE(beam.InterpolatePhaseSmooth(midEdge, value));
    EXPECT_NEAR(value, 1.0, 1e-4);
    ASSERT_TRUE(beam.InterpolatePhaseSmooth(corner, value));
    EXPECT_NEAR(value, 2.0, 1e-12);

    // Power 1 over an area of 0.5, and every ray has power 1.
    ASSERT_TRUE(beam.EvaluateIntensity());
    EXPECT_DOUBLE_EQ(triangle->intensity, 2.0);
    EXPECT_DOUBLE_EQ(beam.GetEndIntensity(1), 2.0);
    EXPECT_EQ(beam.GetEndIntensity(99), 0.0);
    ASSERT_TRUE(beam.InterpolateIntensityFlat(inside, value));
    EXPECT_NEAR(value, 2.0, 1e-12);

    ASSERT_TRUE(beam.EvaluateLimits());
    const BeamLimits& limits = *beam.GetLimits();
    EXPECT_DOUBLE_EQ(limits.phaseMean, 5.0 / 3.0);
    EXPECT_DOUBLE_EQ(limits.phaseRange, 3.0);
    EXPECT_DOUBLE_EQ(limits.maxRange, 1.0);

    // A corner ray gone: the triangle no longer holds anything.
    delete beam.getRayFromId(2);
    EXPECT_FALSE(BeamQUICK::pointInTriRay(corner, &beam, triangle));
    EXPECT_FALSE(beam.InterpolatePhaseFlat(inside, value));
}

TEST(BeamField, LaunchIntensityTakesTheTriangleIntensityWithoutPower) {
    BeamQUICK beam;
    FillTriangle(beam);
    // Ends off the plane of the origin, so that the solid angles are not 0.
    for (int id = 0; id < 3; ++id) {
        beam.getRayFromId(id)->end.Get(2) = 1.0;
        beam.getRayFromId(id)->SetPower(10.0);
    }
    beam.GetTriRaysp()->front()->intensity = 4.0;
    ASSERT_TRUE(beam.intensityTriraysToRays());
    // One triangle: every corner gets its intensity, whatever the weights.
    EXPECT_NEAR(beam.GetEndIntensity(2), 4.0, 1e-12);
}

TEST(BeamRanges, ConesGrowAndSectorsSplitTheRays) {
    beamRange range;
    Ray along, across;
    along.Set(CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 1.0);
    across.Set(CoordQUICK(2.0, 0.0, 0.0), VectorQUICK(0.0, 1.0, 0.0), 1.0);
    range.addRay(&along);
    EXPECT_EQ(range.halfAngle, 0.0);
    range.addRay(&across);
    const double tilt = std::acos(0.0) * 57.30210423832149 / 2.0;
    EXPECT_NEAR(range.halfAngle, tilt, 1e-9);
    const double norm = std::hypot(1.0, std::tan(tilt));  // tan of a degree figure
    EXPECT_NEAR(range.axis.Get(0), 1.0 / norm, 1e-9);
    EXPECT_NEAR(range.axis.Get(1), std::tan(tilt) / norm, 1e-9);
    EXPECT_NEAR(range.centre.Get(0), 2.0, 1e-12);
    EXPECT_NEAR(range.radius, 1.0, 1e-12);

    BeamQUICK few;
    for (int i = 0; i < 5; ++i) few.AddRay(RayEndingAt(i, i, 0.0));
    few.updateBeamRange(false);
    EXPECT_TRUE(few.GetRanges().empty());
    few.AddRay(RayEndingAt(5, 5.0, 0.0));
    EXPECT_TRUE(few.updateBeamRange(false));
    EXPECT_EQ(few.GetRanges().size(), 1u);
    EXPECT_FALSE(few.updateBeamRange(true));

    BeamQUICK spread;
    spread.AddRay(RayEndingAt(0, 0.0, 0.0));  // along y
    Ray* up = RayEndingAt(1, 0.0, 0.0);
    up->Set(CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(0.0, 0.0, 1.0), 1.0);
    spread.AddRay(up);
    spread.AddRay(RayEndingAt(2, 3.0, 0.0));
    EXPECT_TRUE(spread.updateBeamRange(true));
    ASSERT_EQ(spread.GetRanges().size(), 2u);
}
