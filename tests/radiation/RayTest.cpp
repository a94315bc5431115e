#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include "geometry/Coordinates.h"
#include "propagation/FreqResponse.h"
#include "propagation/FreqResponseArray.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Medium.h"
#include "radiation/Ray.h"
#include "radiation/SimulationResources.h"

namespace {

// An initialised volume with a distance model, deleted with the fixture.
class ModelVolume {
public:
    explicit ModelVolume(eParamValue model, double exponent = 2.0) {
        volume->Initialize();
        volume->SetParameterValue(PN_VOLPROPMDL, model);
        volume->SetParameterValue(PN_VOLPROPEXP, exponent);
    }
    ~ModelVolume() { delete volume; }
    int Id() const { return volume->GetSimObjectID(); }

    Volume* volume = new Volume();
};

// A ray along x from the origin, of the given length and wavelength, in the volume.
void Aim(Ray& ray, double length, double wavelength, int volumeId) {
    ray.Set(CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), length);
    ray.SetWavelength(wavelength);
    ray.SetVolumeID(volumeId);
}

double LossAt(eParamValue model, double d, double wavelength, double exponent = 2.0) {
    ModelVolume volume(model, exponent);
    Ray ray;
    Aim(ray, d, wavelength, volume.Id());
    return ray.GetPowerLossFromDistDB(-1.0);
}

double FreeSpaceDB(double d, double wavelength) {
    return 20.0 * std::log10(wavelength / (4.0 * M_PI * d));
}

double GHz(double wavelength) { return 3e8 / wavelength / 1e9; }

}  // namespace

TEST(RayDistanceModel, EachModelGivesItsTermAtSeveralDistancesAndWavelengths) {
    struct Case {
        eParamValue model;
        std::function<double(double d, double f, double lambda)> expected;
    };
    const Case cases[] = {
        {PV_FREESPACE, [](double d, double, double l) { return FreeSpaceDB(d, l); }},
        {PV_FREESPACE_EXP, [](double d, double, double l) { return 2.5 * FreeSpaceDB(d, l) / 2; }},
        {PV_INH_LOS,
         [](double d, double f, double) { return -(16.9 * log10(d) + 32.8 + 20 * log10(f)); }},
        {PV_INH_NLOS,
         [](double d, double f, double) { return -(43.3 * log10(d) + 11.5 + 20 * log10(f)); }},
        {PV_UMI_NLOS,
         [](double d, double f, double) { return -(36.7 * log10(d) + 22.7 + 26 * log10(f)); }},
        {PV_WINNER_A1,
         [](double d, double f, double) { return -(18.7 * log10(d) + 46.8 + 20 * log10(f / 5)); }},
        {PV_WINNER_B1,
         [](double d, double f, double) {
             const double a = 22.7 * log10(d) + 41 + 20 * log10(f / 5);
             const double b =
                 40 * log10(d) + 9.45 - 17.3 * log10(10.0) - 17.3 * log10(1.5) + 2.7 * log10(f / 5);
             return -std::max(a, b);
         }},
    };
    for (const Case& c : cases) {
        for (double lambda : {0.125, 0.06}) {
            for (double d : {1.0, 7.5, 250.0, 3000.0}) {
                const double expected = c.expected(d, GHz(lambda), lambda);
                EXPECT_NEAR(LossAt(c.model, d, lambda, 2.5), expected, 1e-9)
                    << "model " << c.model << ", d " << d << ", lambda " << lambda;
            }
        }
    }
    // The worked value: 1 m at a wavelength of 0.125 m.
    EXPECT_NEAR(LossAt(PV_FREESPACE, 1.0, 0.125), 20 * std::log10(0.125 / 12.566370614359172),
                1e-12);
}

TEST(RayDistanceModel, UmiLosTakesTheLargerBranchAndWinnerPlusTestsItsBreakpoint) {
    const double lambda = 0.125, f = GHz(lambda);
    // At 5 m the 22 log10 branch is the larger loss (51.0 against 15.4 dB), at 2000 m the
    // 40 log10 one (119.4 against 108.2 dB).
    EXPECT_NEAR(LossAt(PV_UMI_LOS, 5.0, lambda), -(22 * log10(5.0) + 28 + 20 * log10(f)), 1e-9);
    EXPECT_NEAR(LossAt(PV_UMI_LOS, 2000.0, lambda),
                -(40 * log10(2000.0) + 7.8 - 18 * log10(10.0) - 18 * log10(1.5) + 2 * log10(f)),
                1e-9);

    // Breakpoint 4 (10 - 1)(1.5 - 1) / 0.125 = 144 m; at it the far branch applies.
    const double nearBranch = -(22.7 * std::log10(143.0) + 27 + 20 * std::log10(f));
    const double farBranch = -(40 * std::log10(144.0) + 7.56 - 17.3 * std::log10(10.0) -
                               17.3 * std::log10(1.5) + 2.7 * std::log10(f));
    EXPECT_NEAR(LossAt(PV_WINNER_PLUS, 143.0, lambda), nearBranch, 1e-9);
    EXPECT_NEAR(LossAt(PV_WINNER_PLUS, 144.0, lambda), farBranch, 1e-9);
}

TEST(RayDistanceModel, UnsetModelActsAsFreeSpaceAndClampsActOnlyFarAway) {
    Ray ray;
    Aim(ray, 1.0, 0.125, -1);
    EXPECT_NEAR(ray.GetPowerLossFromDistDB(-1.0), FreeSpaceDB(1.0, 0.125), 1e-12);
    EXPECT_NEAR(ray.GetPowerLossFromDistDB(20.0), FreeSpaceDB(20.0, 0.125), 1e-12);
    EXPECT_DOUBLE_EQ(ray.GetPowerLossFromDistDB(1e11), -240.0);
    EXPECT_EQ(ray.GetPowerLossFromDistDB(0.0), std::numeric_limits<double>::infinity());
    EXPECT_DOUBLE_EQ(LossAt(PV_FREESPACE_EXP, 1e11, 0.125, 2.5), 2.5 * -120.0);

    for (eParamValue model : {PV_UMA_LOS, PV_UMA_NLOS}) {
        for (double d : {0.5, 10.0, 5000.0}) EXPECT_EQ(LossAt(model, d, 0.125), 0.0);
    }

    // Received power adds the launch figure, the hit losses and the receiver's term.
    ray.SetSourcePowerDB(20.0);
    ray.SetPowerLossDB(-3.0);
    EXPECT_NEAR(ray.getPowerAtDistDB(-1.0, 2.0), 20.0 - 3.0 + FreeSpaceDB(1.0, 0.125) + 2.0, 1e-12);
}

TEST(RayDistanceModel, KnifeEdgeTermOfADiffractedRayWithAParent) {
    const double lambda = 0.125;
    ModelVolume volume(PV_UMA_LOS);
    BeamQUICK parents;
    Ray* parent = new Ray();
    Aim(*parent, 10.0, lambda, volume.Id());
    parent->SetBeamRayId(0);
    parents.AddRay(parent);

    // The child turns by 90 degrees at the end of the parent and runs 5 m along y.
    Ray child;
    child.Set(CoordQUICK(10.0, 0.0, 0.0), VectorQUICK(0.0, 1.0, 0.0), 5.0);
    child.SetVolumeID(volume.Id());
    child.setPrevRay(parent, 10.0);
    child.SetDiffractSource(true);
    EXPECT_EQ(child.GetPowerLossFromDistDB(-1.0), 0.0);  // model "off"
    child.diffractModel = PV_DIFFRACT_KED;

    // Angles in degrees by the system's factor, back to radians by the true pi.
    const double toRadians = 57.30210423832149 * M_PI / 180.0;
    const double r = std::sqrt(125.0);
    const double a1 = std::acos(5.0 / r) * toRadians;
    const double a2 = std::acos(10.0 / r) * toRadians;
    const double v = std::sqrt(2.0 * r / lambda * a1 * a2);
    const double j = 6.9 + 20.0 * std::log10(std::sqrt((v - 0.1) * (v - 0.1) + 1.0) + v - 0.1);
    EXPECT_NEAR(child.GetPowerLossFromDistDB(-1.0), -j, 1e-9);

    // With the parent gone the term is gone too.
    parents.Empty();
    EXPECT_EQ(child.GetPowerLossFromDistDB(-1.0), 0.0);
}

TEST(RayPath, SecondSegmentUsesTheOpticalPathOfTheFirstThroughAGlassVolume) {
    SimulationResources resources;
    resources.init();
    Medium* glass = resources.GetMedium("Glass (ITU)");
    ASSERT_NE(glass, nullptr);
    FreqResponse* response = new FreqResponse();
    response->Initialize();
    response->SetParameterValue(PN_FREQ, 2400.0, PU_HZ, PM_MEGA);
    response->SetParameterValue(PN_TRANSLOSS, -6.0);
    response->SetParameterValue(PN_VOLLOSS, -0.4);
    FreqResponseArray responses;
    responses.push_back(response);

    ModelVolume volume(PV_FREESPACE);
    volume.volume->SetMedium(glass);
    volume.volume->SetResponse(&responses);
    volume.volume->SetParameterValue(PN_BARLOSMDL, PV_LOSS_DB);

    const double lambda = 0.125, f = 3e8 / lambda;
    // Index of the ITU form at f as passed, in Hz: sqrt(|a f^b - j 17.98 c f^d / f|).
    const double conductivity = 0.0043 * std::pow(f, 1.1925);
    const double n = std::sqrt(std::hypot(6.27, 17.98 * conductivity / f));

    BeamQUICK beam;
    Ray* first = new Ray();
    Aim(*first, 3.0, lambda, volume.Id());
    beam.AddRay(first);
    Ray second;
    second.Set(CoordQUICK(3.0, 0.0, 0.0), VectorQUICK(0.0, 0.0, 1.0), 8.0);
    second.SetVolumeID(volume.Id());
    second.setPrevRay(first, 3.0);

    EXPECT_NEAR(first->GetRefractiveIndex(), n, 1e-12);
    EXPECT_DOUBLE_EQ(first->volumeLossPerCm, -0.4);
    EXPECT_NEAR(second.GetEndPhaseDist(2.0), 3.0 * n + 2.0 * n, 1e-12);
    EXPECT_NEAR(second.GetPowerLossFromDistDB(2.0), FreeSpaceDB(5.0 * n, lambda), 1e-9);
    // The phase counts wavelengths of geometric length and ignores the index.
    EXPECT_NEAR(second.GetEndPhase(-1.0), 3.0 / lambda + 8.0 / lambda, 1e-12);

    // "thick" leaves the volume loss at 0; the volume is read again only after a new id.
    volume.volume->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THICK);
    EXPECT_DOUBLE_EQ(second.volumeLossPerCm, -0.4);
    second.SetVolumeID(volume.Id());
    second.checkVolume();
    EXPECT_EQ(second.volumeLossPerCm, 0.0);

    volume.volume->SetResponse(nullptr);
    delete response;
}

TEST(RayPath, ParentLinkCarriesPhaseCountsAndPowerAndCanBeLost) {
    BeamQUICK beam;
    beam.SetSourceName("ap1");
    Ray* first = new Ray();
    Aim(*first, 2.0, 0.5, -1);
    first->SetStartPhase(0.25);
    first->SetStartPhaseDist(1.0);
    first->SetTraceLimit(4);
    first->SetReflectCount(2);
    first->SetSourcePowerDB(17.0);
    first->SetPowerLossDB(-4.0);
    first->hitNormal.SetValues(0.0, 1.0, 0.0);
    first->SetBeamRayId(0);
    beam.AddRay(first);

    Ray second;
    second.setPrevRay(first, 1.5);
    EXPECT_EQ(first->hitDistance, 1.5);
    EXPECT_DOUBLE_EQ(second.GetStartPhase(), 0.25 + 2.0 / 0.5);
    EXPECT_DOUBLE_EQ(second.GetStartPhaseDist(), 3.0);
    EXPECT_EQ(second.GetTraceLimit(), 4);
    EXPECT_EQ(second.GetReflectCount(), 2);
    EXPECT_EQ(second.getPowerAtDistDB(0.0, 0.0), first->getPowerAtDistDB(2.0, 0.0));
    VectorQUICK normal;
    ASSERT_TRUE(second.getPrevNormal(normal));
    EXPECT_EQ(normal.Get(1), 1.0);

    // A hop without a parent stops the walk to the original ray, as does a hop count of 0.
    second.SetTraceCount(1);
    EXPECT_EQ(second.getOriginalRay(), first);
    std::string name;
    EXPECT_TRUE(first->GetSourceName(name) && name == "ap1");

    beam.Empty();
    EXPECT_FALSE(second.getPrevNormal(normal));
    EXPECT_EQ(second.getOriginalRay(), &second);
}

TEST(RayState, SetCopyAndPhaseRules) {
    Ray ray;
    ray.Set(CoordQUICK(1.0, 1.0, 0.0), CoordQUICK(4.0, 5.0, 0.0));
    EXPECT_DOUBLE_EQ(ray.GetLength(), 5.0);
    ray.SetStartPhase(0.3);
    ray.SetStartPhaseDist(2.0);
    ray.SetWavelength(0.1);
    EXPECT_EQ(ray.GetStartPhase(), 0.0);

    ray.SetReflectLimit(3);
    ray.SetTransmitCount(2);
    ray.hit = true;
    ray.endInterfaceId = 7;
    Coordinates from(0.0, 0.0, 0.0), to(0.0, 2.0, 0.0);
    ray.Set(from, to);
    EXPECT_EQ(ray.GetWavelength(), -1.0);
    EXPECT_EQ(ray.GetReflectLimit(), -1);
    EXPECT_EQ(ray.GetTransmitCount(), 0);
    EXPECT_FALSE(ray.hit);
    ray.SetLength(3.0);
    EXPECT_DOUBLE_EQ(ray.end.Get(1), 3.0);

    // The copy constructor resets what depends on the place of the ray; Copy keeps it.
    ray.hitDistance = 1.0;
    ray.AddProgressPoint(from);
    ASSERT_NE(ray.GetProgressPoints(), nullptr);
    EXPECT_TRUE(ray.GetProgressPoints()->empty());
    const Ray copy(ray);
    EXPECT_EQ(copy.hitDistance, -1.0);
    EXPECT_NE(copy.GetProgressPoints(), ray.GetProgressPoints());
    EXPECT_TRUE(copy.equals(&ray));
    Ray other;
    other.Copy(&ray);
    EXPECT_EQ(other.hitDistance, 1.0);
    EXPECT_EQ(other.GetProgressPoints(), nullptr);
    other.SetLength(3.5);
    EXPECT_TRUE(other.printDifference(&ray));

    // A NaN loss is reported and kept.
    testing::internal::CaptureStdout();
    ray.AddPowerLossDB(std::nan(""));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "invalid pIn\n");
    EXPECT_TRUE(std::isnan(ray.GetPowerLossDB()));
}

TEST(RayState, LimitsOfTraceReflectAndTransmit) {
    Ray ray;
    ray.SetReflectLimit(0);
    ray.SetReflectCount(1000);
    EXPECT_FALSE(ray.ReflectAgePastLimit());
    ray.SetReflectLimit(999);
    EXPECT_TRUE(ray.ReflectAgePastLimit());

    // Trace limit -1 needs both of the others past.
    EXPECT_FALSE(ray.TraceAgePastLimit());
    ray.SetTransmitLimit(1);
    ray.SetTransmitCount(2);
    EXPECT_TRUE(ray.TransmitAgePastLimit());
    EXPECT_TRUE(ray.TraceAgePastLimit());

    ray.SetTraceLimit(0);
    ray.SetTraceCount(1);
    EXPECT_TRUE(ray.TraceAgePastLimit());
}

TEST(RayGeometry, PointIsCloseCoversACapsuleAroundTheSegment) {
    Ray ray;
    ray.Set(CoordQUICK(0.0, 0.0, 0.0), VectorQUICK(1.0, 0.0, 0.0), 10.0);
    const double size = 2.0;                                           // h = 1
    EXPECT_TRUE(ray.PointIsClose(CoordQUICK(-0.9, 0.0, 0.0), size));   // behind, within h
    EXPECT_FALSE(ray.PointIsClose(CoordQUICK(-1.1, 0.0, 0.0), size));  // behind, beyond h
    EXPECT_TRUE(ray.PointIsClose(CoordQUICK(5.0, 0.95, 0.0), size));
    EXPECT_FALSE(ray.PointIsClose(CoordQUICK(5.0, 0.0, 1.05), size));
    EXPECT_TRUE(ray.PointIsClose(CoordQUICK(10.9, 0.0, 0.0), size));  // flat reach past the end
    EXPECT_FALSE(ray.PointIsClose(CoordQUICK(11.0, 0.0, 0.0), size));
    EXPECT_TRUE(ray.IsForward(CoordQUICK(0.1, 5.0, 0.0)));
    EXPECT_FALSE(ray.IsForward(CoordQUICK(0.0, 5.0, 0.0)));
}
