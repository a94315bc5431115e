#include <gtest/gtest.h>

#include <cmath>

#include "propagation/Loss.h"
#include "propagation/LossManage.h"

namespace {

constexpr double kPi = 3.141592653589793;

// The amplitude whose 10 log10 a dB entry holds.
double Amplitude(double dB) { return std::pow(10.0, dB / 10.0); }

}  // namespace

TEST(Loss, DecibelsAndFactorsConvertWithTheTenthOutsideThePower) {
    Loss loss;
    EXPECT_EQ(loss.value[2], 1.0);
    EXPECT_EQ(loss.dB[2], 0.0);
    loss.dB[1] = 1.0;
    loss.dB[2] = -10.0;
    loss.FromDB();
    EXPECT_NEAR(loss.value[0], 0.1, 1e-15);
    EXPECT_NEAR(loss.value[1], 1.0, 1e-15);
    EXPECT_NEAR(loss.value[2], 1e-11, 1e-25);

    loss.value[0] = 0.5;
    loss.value[1] = -0.5;
    loss.value[2] = 0.0;
    loss.ToDB();
    EXPECT_NEAR(loss.dB[1], -3.010299956639812, 1e-12);
    EXPECT_EQ(loss.dB[2], -120.0);

    Loss total;
    Loss part;
    part.dB[0] = -3.0;
    total += part;
    total += 2.0;
    EXPECT_NEAR(total.dB[0], -1.0, 1e-12);
    EXPECT_NEAR(total.value[0], 0.01, 1e-15);
    EXPECT_NEAR(total.value[2], 10.0, 1e-12);
}

TEST(LossManage, FresnelFactorsGoInAsTenLogOfTheAmplitude) {
    // At 30 degrees Snell gives sin t = 0.5 / 2, and each polarisation conserves power:
    // r^2 + (n2 cos t / n1 cos i) tau^2 = 1.
    const double i = kPi / 6.0;
    double t = 0.0;
    EXPECT_TRUE(LossManage::GetTheta2RAD(1.0, 4.0, i, t));
    EXPECT_NEAR(t, std::asin(0.25), 1e-12);
    Loss r;
    Loss tau;
    EXPECT_TRUE(LossManage::AddFaceReflectLoss(1.0, 4.0, i, t, r));
    EXPECT_TRUE(LossManage::AddFaceTransmitLoss(1.0, 4.0, i, t, tau));
    EXPECT_EQ(r.dB[2], 0.0);
    const double ratio = 2.0 * std::cos(t) / std::cos(i);
    for (int k = 0; k < 2; ++k) {
        const double rk = Amplitude(r.dB[k]);
        const double tk = Amplitude(tau.dB[k]);
        EXPECT_NEAR(rk * rk + ratio * tk * tk, 1.0, 1e-12) << "polarisation " << k;
    }
    // The perpendicular amplitudes: |r| = 0.381966 and tau = 0.618034.
    EXPECT_NEAR(Amplitude(r.dB[0]), 0.3819660112501051, 1e-12);
    EXPECT_NEAR(Amplitude(tau.dB[0]), 0.6180339887498948, 1e-12);

    // Out of permittivity 4 the critical angle is 30 degrees, reaching it counts, and beyond
    // it there is no refraction angle and both faces add nothing.
    EXPECT_FALSE(LossManage::TotalInternalReflection(4.0, 1.0, 29.0 * kPi / 180.0));
    EXPECT_TRUE(LossManage::TotalInternalReflection(9.0, 1.0, std::asin(1.0 / 3.0) + 1e-12));
    EXPECT_FALSE(LossManage::GetTheta2RAD(4.0, 1.0, kPi / 3.0, t));
    Loss total;
    total.dB[0] = -2.0;
    LossManage::AddFaceReflectLoss(4.0, 1.0, kPi / 3.0, 0.0, total);
    LossManage::AddFaceTransmitLoss(4.0, 1.0, kPi / 3.0, 0.0, total);
    EXPECT_EQ(total.dB[0], -2.0);
    EXPECT_EQ(total.dB[1], 0.0);
}

TEST(LossManage, VolumeLossAndMaterialFits) {
    // 0.01 S/m at permittivity 4: 8.18 dB per metre on both polarisations.
    Loss loss;
    loss.dB[2] = -1.0;
    EXPECT_TRUE(LossManage::AddVolumeLoss(0.01, 4.0, 2.0, loss));
    EXPECT_NEAR(loss.dB[0], -16.36, 1e-12);
    EXPECT_NEAR(loss.dB[1], -16.36, 1e-12);
    EXPECT_EQ(loss.dB[2], -1.0);

    // Concrete at 5 GHz: 5.31 and 0.0326 * 5^0.8095; an unknown material has no fit.
    double permittivity = 0.0;
    double conductivity = 0.0;
    EXPECT_FALSE(
        LossManage::GetCondPerm(static_cast<eMaterial>(7), 5.0, permittivity, conductivity));
    EXPECT_TRUE(LossManage::GetCondPerm(MAT_CONCRETE, 5.0, permittivity, conductivity));
    EXPECT_NEAR(permittivity, 5.31, 1e-12);
    EXPECT_NEAR(conductivity, 0.11995927119810051, 1e-12);
}
