#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "control/OpticElement.h"
#include "propagation/Interface.h"
#include "propagation/TransmitManage.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Medium.h"
#include "radiation/Ray.h"

namespace {

constexpr double PI = 3.141592653589793;
// Degrees as VectorQUICK::Angle gives them, and the turn of an incidence angle to radians.
constexpr double SYSTEM_DEGREES = 57.30210423832149;
constexpr double INCIDENCE_RADIANS = 0.017453292519943295;
constexpr double WAVELENGTH = 0.125;  // 2.4 GHz
constexpr double PARENT_LOSS = -3.0;

double Db(double x) { return 10.0 * std::log10(std::abs(x)); }

// A power factor in dB, with -120 for one under 1e-12.
double FactorDb(double x) { return x < 1e-12 ? -120.0 : 10.0 * std::log10(x); }

double Dot(const VectorQUICK& a, const VectorQUICK& b) {
    return a.data[0] * b.data[0] + a.data[1] * b.data[1] + a.data[2] * b.data[2];
}

// The incidence angle in radians between direction d and a normal turned against it, with
// the degrees of the system's angle convention.
double Incidence(const VectorQUICK& d, const VectorQUICK& normal) {
    double a = std::acos(Dot(d, normal)) * SYSTEM_DEGREES;
    if (a > 90.0) a -= 90.0;
    return (90.0 - a) * INCIDENCE_RADIANS;
}

struct Numbers {
    double permittivity;
    double conductivity;
};

Numbers At24GHz(Medium* medium) {
    Numbers n{};
    double permeability = 0.0;
    medium->GetRelPtPbCond_fromFreq(2.4, n.permittivity, permeability, n.conductivity, false);
    return n;
}

// Fresnel transmission in, through a lossy sheet of width w, and out again, each
// amplitude taken as 10 log10; the mean of the two polarisations.
double ThinWallDB(double i, Numbers in, Numbers sheet, double w) {
    const double n1 = std::sqrt(in.permittivity);
    const double n2 = std::sqrt(sheet.permittivity);
    const double t = std::acos(
        std::sqrt(1.0 - in.permittivity / sheet.permittivity * std::sin(i) * std::sin(i)));
    const double ci = std::cos(i);
    const double ct = std::cos(t);
    const double inside = -sheet.conductivity * 1636.0 / n2 * w / ct;
    const double first =
        Db(2 * n1 * ci / (n1 * ci + n2 * ct)) + inside + Db(2 * n2 * ct / (n2 * ct + n1 * ci));
    const double second =
        Db(2 * n1 * ci / (n2 * ci + n1 * ct)) + inside + Db(2 * n2 * ct / (n1 * ct + n2 * ci));
    return (first + second) / 2.0;
}

void ExpectDirection(const VectorQUICK& actual, double x, double y, double z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    EXPECT_NEAR(actual.data[0], x / length, 1e-9);
    EXPECT_NEAR(actual.data[1], y / length, 1e-9);
    EXPECT_NEAR(actual.data[2], z / length, 1e-9);
}

// A wall in the plane x = 0 of a "pointPointHeight" face, and rays that end on it at a
// chosen incidence in the x-y plane, coming from negative x.
class TransmitManageTest : public ::testing::Test {
protected:
    void SetUp() override {
        OpticElement::resources.init();
        air = OpticElement::resources.GetMedium("Vacuum/ air");
        concrete = OpticElement::resources.GetMedium("Concrete (ITU)");
        glass = OpticElement::resources.GetMedium("Glass (ITU)");
        face = new Interface();
        face->Initialize();
        face->SetParameterValue(PN_TYP, PV_TYPE_POINTPOINTHEIGHT);
        face->SetParameterValue(PN_MED, std::string("Concrete (ITU)"));
        face->SetParameterValue(PN_THICKNESS, 0.2);
        face->SetParameterValue(PN_BARREFMDL, PV_REFLECT_SPECULAR);
        face->SetParameterValue(PN_BARTRNMDL, PV_TRANSMIT_CONDUCTIVE);
        face->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THIN);
        beam = new BeamQUICK();
    }

    void TearDown() override {
        for (Ray* ray : task.reflected) delete ray;
        for (Ray* ray : task.transmitted) delete ray;
        for (Ray* ray : made) delete ray;
        delete beam;
        delete face;
    }

    // A ray of the beam at incidence degrees (in the x-y plane) ending at the origin.
    Ray* Incoming(double degrees) {
        const double a = degrees * PI / 180.0;
        auto* ray = new Ray();
        const CoordQUICK origin(-2.0 * std::cos(a), -2.0 * std::sin(a), 0.0);
        ray->Set(origin, VectorQUICK(std::cos(a), std::sin(a), 0.0), 2.0);
        ray->SetWavelength(WAVELENGTH);
        ray->SetSourcePowerDB(20.0);
        ray->SetPower(20.0);
        ray->SetPowerLossDB(PARENT_LOSS);
        ray->hitNormal.SetValues(1.0, 0.0, 0.0);
        ray->SetBeamRayId(nextRayId++);
        beam->AddRay(ray);
        return ray;
    }

    void Hit(Ray* ray, Medium* in, Medium* out) {
        task.rays.clear();
        task.rays[ray->GetBeamRayId()] = ray;
        task.face = face;
        task.mediumIn = in;
        task.mediumOut = out;
        ASSERT_TRUE(TransmitManage::TransmitRays(task));
    }

    void ClearChildren() {
        for (Ray* ray : task.reflected) made.push_back(ray);
        for (Ray* ray : task.transmitted) made.push_back(ray);
        task.reflected.clear();
        task.transmitted.clear();
    }

    Medium* air = nullptr;
    Medium* concrete = nullptr;
    Medium* glass = nullptr;
    Interface* face = nullptr;
    BeamQUICK* beam = nullptr;
    TransmitTask task;
    std::vector<Ray*> made;
    int nextRayId = 0;
};

TEST_F(TransmitManageTest, ThinWallGivesTransmittedLossAndLossFreeSpecularReflection) {
    Ray* ray = Incoming(30.0);
    Hit(ray, air, air);
    ASSERT_EQ(task.transmitted.size(), 1u);
    ASSERT_EQ(task.reflected.size(), 1u);
    Ray* through = task.transmitted[0];
    Ray* mirror = task.reflected[0];

    const double i = Incidence(ray->dir, VectorQUICK(-1.0, 0.0, 0.0));
    const double wall = ThinWallDB(i, At24GHz(air), At24GHz(concrete), 0.2);
    EXPECT_LT(wall, -1.0);
    EXPECT_NEAR(through->GetPowerLossDB(), PARENT_LOSS + wall, 1e-9);
    EXPECT_DOUBLE_EQ(mirror->GetPowerLossDB(), PARENT_LOSS);
    EXPECT_DOUBLE_EQ(mirror->GetPower(), ray->GetPower());
    EXPECT_DOUBLE_EQ(through->GetPower(), ray->GetPower());

    ExpectDirection(mirror->dir, -std::cos(PI / 6.0), std::sin(PI / 6.0), 0.0);
    for (Ray* child : {through, mirror}) {
        // Each child leaves the wall 0.01 m along its own direction, chained to the ray.
        EXPECT_NEAR(child->origin.data[0], 0.01 * child->dir.data[0], 1e-12);
        EXPECT_NEAR(child->origin.data[1], 0.01 * child->dir.data[1], 1e-12);
        EXPECT_EQ(child->getPrevRay(), ray);
        EXPECT_EQ(child->GetTraceCount(), 1);
        EXPECT_EQ(child->startInterfaceId, face->GetSimObjectID());
        EXPECT_DOUBLE_EQ(child->GetWavelength(), WAVELENGTH);
        EXPECT_NEAR(child->GetStartPhaseDist(), 2.0, 1e-12);
    }
    EXPECT_EQ(std::make_pair(through->GetTransmitCount(), through->GetReflectCount()),
              std::make_pair(1, 0));
    EXPECT_EQ(std::make_pair(mirror->GetTransmitCount(), mirror->GetReflectCount()),
              std::make_pair(0, 1));
}

TEST_F(TransmitManageTest, NormalIncidenceEndsTheRayAndTransmitLimitIsRespected) {
    Hit(Incoming(0.05), air, air);
    EXPECT_TRUE(task.transmitted.empty());
    EXPECT_TRUE(task.reflected.empty());

    Hit(Incoming(0.5), air, air);
    EXPECT_EQ(task.transmitted.size(), 1u);
    EXPECT_EQ(task.reflected.size(), 1u);
    ClearChildren();

    Ray* spent = Incoming(30.0);
    spent->SetTransmitLimit(2);
    spent->SetTransmitCount(3);
    Hit(spent, air, air);
    EXPECT_TRUE(task.transmitted.empty());
    EXPECT_TRUE(task.reflected.empty());

    TransmitTask empty;
    empty.face = face;
    EXPECT_FALSE(TransmitManage::TransmitRays(empty));
}

TEST_F(TransmitManageTest, TotalInternalReflectionReflectsEvenWhenTheFaceDoesNot) {
    face->SetReflect(false);
    face->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THICK);
    Hit(Incoming(60.0), glass, air);
    EXPECT_TRUE(task.transmitted.empty());
    ASSERT_EQ(task.reflected.size(), 1u);
    ExpectDirection(task.reflected[0]->dir, -std::cos(PI / 3.0), std::sin(PI / 3.0), 0.0);
    ClearChildren();

    // Below the critical angle the same face transmits and does not reflect.
    Hit(Incoming(10.0), glass, air);
    EXPECT_EQ(task.transmitted.size(), 1u);
    EXPECT_TRUE(task.reflected.empty());
}

TEST_F(TransmitManageTest, RefractionUsesTheFaceMediumWhenBothSidesAreOne) {
    // The normal part of the direction is kept, the tangential part scaled by n1 / n2.
    auto expectRefracted = [&](Medium* out, Medium* farSide) {
        Hit(Incoming(30.0), air, out);
        ASSERT_EQ(task.transmitted.size(), 1u);
        const double ratio = std::sqrt(1.0 / At24GHz(farSide).permittivity);
        ExpectDirection(task.transmitted[0]->dir, std::cos(PI / 6), ratio * std::sin(PI / 6), 0);
        ClearChildren();
    };
    expectRefracted(air, concrete);
    expectRefracted(glass, glass);
    face->SetParameterValue(PN_MED, std::string("Vacuum/ air"));
    expectRefracted(air, air);
}

TEST_F(TransmitManageTest, FlatDiffuseFanInTwoDimensions) {
    face->SetParameterValue(PN_TRACEDIM, static_cast<eParamNumber>(4));  // "2D"
    face->SetParameterValue(PN_DIFFANG, 40.0);
    face->SetParameterValue(PN_RAYGAP, 10.0);
    Ray* ray = Incoming(30.0);
    DirQUICK normal(-1.0, 0.0, 0.0);
    TransmitManage::ReflectDiffuse(ray, made, PV_EMPTY, face, normal, -1, 1.0, 1.0);
    // Five directions, 10 degrees apart, from -20 to 20 degrees about the outward normal,
    // all in the plane of incidence; each charged the face's default factor of one half.
    ASSERT_EQ(made.size(), 5u);
    for (int k = 0; k < 5; ++k) {
        const double phi = (-20.0 + 10.0 * k) * PI / 180.0;
        ExpectDirection(made[k]->dir, -std::cos(phi), -std::sin(phi), 0.0);
        EXPECT_NEAR(made[k]->GetPowerLossDB(), PARENT_LOSS + Db(0.5), 1e-9);
        EXPECT_EQ(made[k]->GetReflectCount(), 1);
        EXPECT_EQ(made[k]->getPrevRay(), ray);
    }
    for (Ray* child : made) delete child;
    made.clear();

    // Rays that would start under minTracePower are deleted.
    face->SetParameterValue(PN_TRCMIN, 500.0);
    TransmitManage::ReflectDiffuse(ray, made, PV_EMPTY, face, normal, -1, 1.0, 1.0);
    EXPECT_TRUE(made.empty());
}

TEST_F(TransmitManageTest, ConicalLambertianFanInThreeDimensions) {
    face->SetParameterValue(PN_BARREFMDL, PV_REFLECT_LAMBERTIAN);
    face->RemoveParameter(PN_BARLOSMDL);  // no loss model: the face factor is one half
    face->SetParameterValue(PN_DIFFANG, 40.0);
    face->SetParameterValue(PN_RAYGAP, 10.0);
    const VectorQUICK normal(-1.0, 0.0, 0.0);
    std::vector<size_t> counts;
    for (double degrees : {30.0, 80.0}) {
        Ray* ray = Incoming(degrees);
        Hit(ray, air, air);
        const double a = degrees * PI / 180.0;
        const VectorQUICK mirror(-std::cos(a), std::sin(a), 0.0);
        ASSERT_FALSE(task.reflected.empty());
        bool alongMirror = false;
        for (Ray* child : task.reflected) {
            EXPECT_TRUE(child->GetIsDiffuseSource());
            EXPECT_GE(Dot(child->dir, normal), 0.0);
            EXPECT_LE(std::acos(std::min(1.0, Dot(child->dir, mirror))), 20.0 * PI / 180 + 1e-9);
            alongMirror = alongMirror || Dot(child->dir, mirror) > 1.0 - 1e-12;
            // Ratio 1, the face's one half, and the Lambert pattern; the parent's loss is
            // replaced, not added to.
            const double p = -Dot(normal, ray->dir) * Dot(normal, child->dir) / PI;
            EXPECT_NEAR(child->GetPowerLossDB(), Db(0.5) + FactorDb(p), 1e-9);
        }
        EXPECT_TRUE(alongMirror);
        counts.push_back(task.reflected.size());
        ClearChildren();
    }
    // At 80 degrees part of the cone points into the wall and is dropped.
    EXPECT_LT(counts[1], counts[0]);
}

// An edge along z through the origin, inward along +y, passed by a ray that climbs
// along the edge as it goes.
class DiffractTest : public TransmitManageTest {
protected:
    DiffractSource Edge(double sweep) {
        Ray* ray = new Ray();
        const VectorQUICK direction(1.0, 0.0, 0.5);
        ray->Set(CoordQUICK(-2.0, -0.05, -1.0), direction, 2.0);
        ray->SetWavelength(WAVELENGTH);
        ray->SetSourcePowerDB(20.0);
        ray->SetPowerLossDB(PARENT_LOSS);
        ray->SetBeamRayId(nextRayId++);
        beam->AddRay(ray);
        DiffractSource source;
        source.ray = ray;
        source.edgePoint = CoordQUICK(0.0, 0.0, 0.0);
        source.inward = DirQUICK(0.0, 1.0, 0.0);
        source.edgeDir = DirQUICK(0.0, 0.0, 1.0);
        source.sweepAngle = sweep;
        source.missDistance = 0.05;
        return source;
    }
};

TEST_F(DiffractTest, FanOnKellersConeFromTheRayRoundToInward) {
    DiffractSource source = Edge(90.0);
    ASSERT_TRUE(TransmitManage::Diffract(source, made, face, 10.0, PV_DIFFRACT_BERG));
    ASSERT_EQ(made.size(), 8u);
    const double slope = source.ray->dir.data[2];
    // The angle from the ray's own line to inward, as the system measures it.
    const double total = 90.0 * PI / 180.0 * SYSTEM_DEGREES * PI / 180.0;
    for (int k = 0; k < 8; ++k) {
        Ray* child = made[k];
        EXPECT_NEAR(child->dir.data[2], slope, 1e-12);
        const double turned = std::atan2(child->dir.data[1], child->dir.data[0]);
        EXPECT_NEAR(turned, (k + 1) / 9.0 * total, 1e-9);
        EXPECT_EQ(child->diffractModel, PV_DIFFRACT_BERG);
    }
    for (Ray* child : made) delete child;
    made.clear();

    // n = round(sweep / gap): under 1.5 gaps no ray, at 1.5 gaps one.
    DiffractSource narrow = Edge(14.9);
    TransmitManage::Diffract(narrow, made, face, 10.0, PV_DIFFRACT_BERG);
    EXPECT_TRUE(made.empty());
    DiffractSource wider = Edge(15.0);
    TransmitManage::Diffract(wider, made, face, 10.0, PV_DIFFRACT_BERG);
    EXPECT_EQ(made.size(), 1u);
}

TEST_F(DiffractTest, ModelsChargeTheFanAndOffClearsTheSources) {
    std::vector<DiffractSource> sources{Edge(30.0)};
    std::vector<Ray*> out;
    face->SetParameterValue(PN_BARDIFMDL, PV_DIFFRACT_OFF);
    EXPECT_TRUE(TransmitManage::TransmitDiffractSources(sources, &out, face));
    EXPECT_TRUE(sources.empty());
    EXPECT_TRUE(out.empty());

    // BERG: the virtual path from the source grows by (a / 90)^exp sqrt(dep / wavelength).
    face->SetParameterValue(PN_BARDIFMDL, PV_DIFFRACT_BERG);
    face->SetParameterValue(PN_RAYGAP, 10.0);
    face->SetParameterValue(PN_BARDIFANGDEP, 0.5);
    face->SetParameterValue(PN_BARDIFEXP, 1.0);
    sources.push_back(Edge(30.0));
    Ray* parent = sources[0].ray;
    ASSERT_TRUE(TransmitManage::TransmitDiffractSources(sources, &out, face));
    ASSERT_EQ(out.size(), 2u);
    for (Ray* child : out) {
        const double a = std::acos(Dot(parent->dir, child->dir)) * SYSTEM_DEGREES;
        const double s = a / 90.0 * std::sqrt(0.5 / WAVELENGTH);
        const double d = child->origin.diff(parent->origin);
        EXPECT_NEAR(child->GetStartPhaseDist(), (1.0 + s) * (2.0 + d), 1e-9);
        EXPECT_TRUE(child->GetIsDiffractSource());
        EXPECT_EQ(child->GetReflectCount(), 1);
        EXPECT_EQ(child->GetTraceCount(), 1);
        EXPECT_DOUBLE_EQ(child->GetPowerLossDB(), PARENT_LOSS);
    }
    made.insert(made.end(), out.begin(), out.end());
    out.clear();

    // Knife edge: the path restarts at the edge and the child takes the knife-edge and
    // distance loss at its end.
    face->SetParameterValue(PN_BARDIFMDL, PV_DIFFRACT_KED);
    sources.assign(1, Edge(30.0));
    parent = sources[0].ray;
    ASSERT_TRUE(TransmitManage::TransmitDiffractSources(sources, &out, face));
    ASSERT_EQ(out.size(), 2u);
    const double toEdge = std::sqrt(4.0 + 0.05 * 0.05 + 1.0);
    for (Ray* child : out) {
        EXPECT_NEAR(child->GetStartPhaseDist(), toEdge, 1e-12);
        VectorQUICK q(child->end.data[0] - parent->origin.data[0],
                      child->end.data[1] - parent->origin.data[1],
                      child->end.data[2] - parent->origin.data[2]);
        const double r = q.GetLength();
        q.Normalize();
        const double a1 = std::acos(Dot(q, child->dir)) * SYSTEM_DEGREES * PI / 180.0;
        const double a2 = std::acos(Dot(q, parent->dir)) * SYSTEM_DEGREES * PI / 180.0;
        const double v = std::sqrt(2.0 * r / WAVELENGTH * a1 * a2);
        const double knife =
            6.9 + 20.0 * std::log10(std::sqrt((v - 0.1) * (v - 0.1) + 1.0) + v - 0.1);
        const double freeSpace = 20.0 * std::log10(WAVELENGTH / (4.0 * PI * (toEdge + 0.01)));
        EXPECT_NEAR(child->GetPowerLossDB(), PARENT_LOSS - knife + freeSpace, 1e-9);
    }
    made.insert(made.end(), out.begin(), out.end());
}

}  // namespace
