#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "propagation/RefIndexProfile.h"
#include "propagation/Volume.h"
#include "radiation/Ray.h"

namespace {

// A volume of one shape: size, apertureSizeInner and length, ratio1 1 and the other two.
std::unique_ptr<Volume> Shaped(eParamValue shape, double size, double inner, double length,
                               double ratio2 = 1.0, double ratio3 = 1.0) {
    auto volume = std::make_unique<Volume>();
    volume->Initialize();
    volume->SetParameterValue(PN_OBJSHAP, shape);
    volume->SetParameterValue(PN_SIZ, size);
    volume->SetParameterValue(PN_APSIZEIN, inner);
    volume->SetParameterValue(PN_LEN, length);
    volume->SetParameterValue(PN_SHAPRATIO2, ratio2);
    volume->SetParameterValue(PN_SHAPRATIO3, ratio3);
    volume->checkParams();
    return volume;
}

}  // namespace

TEST(VolumeShape, CylinderBlockAndWallDistances) {
    // Cylinder of diameter 2 about z, as long: inside, on the side, beyond side and end.
    auto cylinder = Shaped(PV_SHAPE_CYLINDER, 2.0, 0.0, 0.0);
    EXPECT_DOUBLE_EQ(cylinder->DistanceOutside(CoordQUICK(0.5, 0.0, 0.0)), -0.5);
    EXPECT_DOUBLE_EQ(cylinder->DistanceOutside(CoordQUICK(0.0, 1.0, 0.5)), 0.0);
    EXPECT_FALSE(cylinder->Contains(CoordQUICK(0.0, 1.0, 0.5)));
    EXPECT_DOUBLE_EQ(cylinder->DistanceOutside(CoordQUICK(3.0, 4.0, 0.0)), 4.0);
    EXPECT_DOUBLE_EQ(cylinder->DistanceOutside(CoordQUICK(0.0, 0.0, -3.0)), 2.0);

    // Block with half sides 1 along z (the main axis), 2 along x and 3 along y.
    auto block = Shaped(PV_SHAPE_BLOCK, 2.0, 0.0, 0.0, 2.0, 3.0);
    EXPECT_DOUBLE_EQ(block->DistanceOutside(CoordQUICK(1.5, 2.5, 0.2)), -0.5);
    EXPECT_DOUBLE_EQ(block->DistanceOutside(CoordQUICK(2.0, 0.0, 0.0)), 0.0);
    EXPECT_DOUBLE_EQ(block->DistanceOutside(CoordQUICK(5.0, 7.0, 0.0)), 3.0);  // not 4
    EXPECT_DOUBLE_EQ(block->DistanceOutside(CoordQUICK(0.0, 9.0, 4.0)), 3.0);  // main axis first

    // A wall 10 long along x, 0.5 plus 3 across y and 3 high along z.
    auto wall = Shaped(PV_SHAPE_WALL, 0.5, 3.0, 10.0);
    eParamValue shape = PV_EMPTY;
    EXPECT_TRUE(wall->GetParameterValue(PN_OBJSHAP, shape) && shape == PV_SHAPE_WALL);
    wall->SetAxes(DirQUICK(1.0, 0.0, 0.0), DirQUICK(0.0, 1.0, 0.0));
    EXPECT_FALSE(wall->Contains(CoordQUICK(0.0, 1.75, 0.0)));
    EXPECT_NEAR(wall->DistanceOutside(CoordQUICK(0.0, -1.5, 1.4)), -0.1, 1e-12);
    EXPECT_DOUBLE_EQ(wall->DistanceOutside(CoordQUICK(6.0, 0.0, 0.0)), 1.0);
    EXPECT_DOUBLE_EQ(wall->DistanceOutside(CoordQUICK(0.0, 2.0, 2.0)), 0.25);
    Coordinates heavy(4.0, 0.0, 0.0);
    EXPECT_TRUE(wall->Contains(heavy));

    // Any other shape asks the faces; with none the point is sizeRadius away.
    EXPECT_DOUBLE_EQ(Shaped(PV_SHAPE_SPHERE, 2.5, 0.0, 0.0)->DistanceOutside(CoordQUICK()), 2.5);
}

TEST(VolumeShape, RefractiveIndexProfiles) {
    RefIndexProfile profile;
    profile.indexMin = 1.0;
    profile.indexMax = 3.0;
    double n = 0.0, s = 0.0;
    ASSERT_TRUE(profile.At(0.7, n, s));
    EXPECT_DOUBLE_EQ(n, 2.0);
    EXPECT_DOUBLE_EQ(s, 0.0);
    profile.shape = PV_REFINDEX_CONE;
    EXPECT_FALSE(profile.At(0.5, n, s));  // no radius

    // Bell of height 2 over 1, peak at 1, width 2: u = 0.5 gives exp(-0.25).
    profile.radius = 2.0;
    profile.shape = PV_REFINDEX_GAUSSIAN;
    profile.peakOffset = 1.0;
    const double bell = 0.77880078307140488;
    ASSERT_TRUE(profile.At(2.0, n, s));
    EXPECT_NEAR(n, 1.0 + 2.0 * bell, 1e-12);
    EXPECT_NEAR(s, -bell, 1e-12);

    // Parabolic law: halfway out the index has fallen by a quarter of the contrast; past
    // the radius it stays at the minimum. With exponent 1 it is the cone.
    profile.shape = PV_REFINDEX_POWERLAW;
    ASSERT_TRUE(profile.At(1.0, n, s));
    EXPECT_DOUBLE_EQ(n, 2.5);
    EXPECT_DOUBLE_EQ(s, -1.0);
    ASSERT_TRUE(profile.At(3.0, n, s));
    EXPECT_DOUBLE_EQ(n, 1.0);
    profile.exponent = 1.0;
    double coneN = 0.0, coneS = 0.0;
    profile.At(0.5, n, s);
    profile.shape = PV_REFINDEX_CONE;
    profile.At(0.5, coneN, coneS);
    EXPECT_DOUBLE_EQ(n, coneN);
    EXPECT_DOUBLE_EQ(s, coneS);

    // The slopes agree with central differences of the indices.
    for (eParamValue shape : {PV_REFINDEX_GAUSSIAN, PV_REFINDEX_POWERLAW}) {
        profile.shape = shape;
        for (double exponent : {1.5, 2.0, 3.0}) {
            profile.exponent = exponent;
            for (double a : {0.3, 0.8, 1.7}) {
                double up = 0.0, down = 0.0, unused = 0.0;
                profile.At(a + 1e-6, up, unused);
                profile.At(a - 1e-6, down, unused);
                profile.At(a, n, s);
                EXPECT_NEAR(s, (up - down) / 2e-6, 1e-5) << shape << " " << exponent << " " << a;
            }
        }
    }
}

TEST(VolumeShape, SteppingBendsTowardsTheHigherIndex) {
    auto volume = Shaped(PV_SHAPE_CYLINDER, 4.0, 0.0, 0.0);
    Coordinates from(0.5, 0.0, 0.0);
    Direction toward(0.0, 0.0, 1.0);
    Ray ray(from, toward, 10.0);
    std::map<int, Ray*> rays{{0, &ray}};
    // -1 is the default: no stepping, nothing touched.
    EXPECT_FALSE(volume->stepTransmit(&rays, false));
    EXPECT_DOUBLE_EQ(ray.origin.data[2], 0.0);

    // Cone of radius 2, index 2.5 and slope -1 at a = 0.5: one step of 0.1 turns the ray
    // by (-1, 0, 0) * 0.1 / 2.5 towards the axis.
    volume->SetParameterValue(PN_RINDPROF, PV_REFINDEX_CONE);
    volume->SetParameterValue(PN_RINDMIN, 1.0);
    volume->SetParameterValue(PN_RINDMAX, 3.0);
    volume->SetParameterValue(PN_VOLSTEPDIST, 0.1);
    volume->SetParameterValue(PN_VOLSTEPS, 1);
    EXPECT_TRUE(volume->stepTransmit(&rays, false));
    const double norm = std::sqrt(1.0 + 0.04 * 0.04);
    EXPECT_NEAR(ray.dir.data[0], -0.04 / norm, 1e-12);
    EXPECT_NEAR(ray.origin.data[0], 0.5 - 0.1 * 0.04 / norm, 1e-12);
    EXPECT_NEAR(ray.origin.data[2], 0.1 / norm, 1e-12);

    // A shaped profile in a volume of no size cannot step.
    volume->SetParameterValue(PN_SIZ, 0.0);
    volume->UpdateSize();
    EXPECT_FALSE(volume->stepTransmit(&rays, false));
}
