#include <gtest/gtest.h>

#include <cmath>

#include "control/OpticElement.h"
#include "propagation/Loss.h"
#include "propagation/LossManage.h"
#include "radiation/Medium.h"
#include "support/SystemScene.h"
#include "system/LibInterface.h"
#include "system/System_.h"

namespace {

// Runs the scene in the caller, serially, and hands back the signal of the access point "AP"
// at the sample point "SP"; the facade keeps the record.
const e_ReceivedSignal_* RunAndRead(LibInterface& lib, SystemScene& scene) {
    lib.SetSystem(new System_(scene.Release()));
    EXPECT_TRUE(lib.BeginUpdate(false, false));
    EXPECT_TRUE(lib.UpdateComplete());
    EXPECT_TRUE(lib.ExtractResults());
    e_SamplePoint_* sp = SamplePointNamed(lib.GetSystem(), "SP");
    return sp == nullptr ? nullptr : SignalFrom(sp, "AP");
}

// The dB that one thin sheet of the medium, thickness metres thick, takes from a ray that
// meets it at incidence angle (radians from the normal): into the sheet, through it on the
// slanted path, and out again; the mean of both polarisations.
double ThinSheetLossDB(const std::string& medium, double thickness, double incidence) {
    double permittivity = 0, permeability = 0, conductivity = 0;
    Medium* material = OpticElement::resources.GetMedium(medium);
    material->GetRelPtPbCond_fromFreq(2.437, permittivity, permeability, conductivity, false);
    double refracted = 0;
    LossManage::GetTheta2RAD(1.0, permittivity, incidence, refracted);
    Loss loss;
    LossManage::AddFaceTransmitLoss(1.0, permittivity, incidence, refracted, loss);
    LossManage::AddVolumeLoss(conductivity, permittivity, thickness / std::cos(refracted), loss);
    LossManage::AddFaceTransmitLoss(permittivity, 1.0, refracted, incidence, loss);
    return (loss.dB[0] + loss.dB[1]) / 2;
}

}  // namespace

TEST(PropagationPhysics, FreeSpaceLineOfSightFollowsTheFriisFormula) {
    SystemScene scene;
    scene.AddAccessPoint("AP", 2, 3, 0.1, 2);
    scene.AddSamplePoint("SP", 8, 5, 1);
    LibInterface lib;
    const e_ReceivedSignal_* signal = RunAndRead(lib, scene);
    ASSERT_NE(signal, nullptr);
    double expected = SystemScene::FreeSpacePowerDBW(0.1, 2 + 1, std::sqrt(40.0));
    EXPECT_NEAR(signal->receivedPower_dBW, expected, 0.05);
    EXPECT_NEAR(signal->receivedPower_dBm, expected + 30, 0.05);
    EXPECT_GE(signal->receivedPathCount, 1);
}

TEST(PropagationPhysics, ThinConcreteWallTakesItsLossAtTheIncidence) {
    SystemScene scene;
    scene.AddAccessPoint("AP", 2, 3, 0.1, 2);
    scene.AddSamplePoint("SP", 8, 5, 1);
    scene.AddWall(5, -5, 5, 11, MEDIA_CONCRETE, 0.1);
    LibInterface lib;
    const e_ReceivedSignal_* signal = RunAndRead(lib, scene);
    ASSERT_NE(signal, nullptr);
    double incidence = std::atan2(2.0, 6.0);
    double expected = SystemScene::FreeSpacePowerDBW(0.1, 3, std::sqrt(40.0)) +
                      ThinSheetLossDB(LibInterface::GetMediumName(MEDIA_CONCRETE), 0.1, incidence);
    EXPECT_NEAR(signal->receivedPower_dBW, expected, 0.1);
}

TEST(PropagationPhysics, BehindAMetalWallTheReflectedPathCarries) {
    SystemScene scene;
    scene.AddAccessPoint("AP", 2, 3, 0.1, 2);
    scene.AddSamplePoint("SP", 8, 3, 1);
    // A metal screen between them, and a metal wall at y = 7 that reflects around it.
    scene.AddWall(5, 0, 5, 6, MEDIA_METAL, 0.01);
    scene.AddWall(-8, 7, 18, 7, MEDIA_METAL, 0.01);
    LibInterface lib;
    const e_ReceivedSignal_* signal = RunAndRead(lib, scene);
    ASSERT_NE(signal, nullptr);
    // The image of the access point in the wall at y = 7 lies at (2, 11).
    double reflected = SystemScene::FreeSpacePowerDBW(0.1, 3, std::sqrt(36.0 + 64.0));
    double direct = SystemScene::FreeSpacePowerDBW(0.1, 3, 6.0);
    EXPECT_LT(signal->receivedPower_dBW, direct - 3);
    EXPECT_NEAR(signal->receivedPower_dBW, reflected, 3.0);
}
