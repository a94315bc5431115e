#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "control/OpticElement.h"
#include "control/SimEvaluation.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMSource.h"
#include "radiation/TestPoint.h"
#include "support/SystemScene.h"
#include "system/LibInterface.h"
#include "system/System_.h"

namespace {

// A facade holding a scene of one access point "AP" and the sample points "near" and "far".
class ExtractResults : public ::testing::Test {
protected:
    void SetUp() override {
        SystemScene scene;
        ap = scene.AddAccessPoint("AP", 0, 0, 0.1, 2);
        scene.AddSamplePoint("near", 4, 0, 1);
        scene.AddSamplePoint("far", -8, 3, 1);
        scene.AddWall(2, 4, 2, 8, 1);
        lib.SetSystem(new System_(scene.Release()));
        near = SamplePointNamed(lib.GetSystem(), "near");
        far = SamplePointNamed(lib.GetSystem(), "far");
    }

    void RunOnce() {
        ASSERT_TRUE(lib.BeginUpdate(false, true));
        ASSERT_TRUE(lib.UpdateComplete());
    }

    LibInterface lib;
    e_AccessPoint_* ap = nullptr;
    e_SamplePoint_* near = nullptr;
    e_SamplePoint_* far = nullptr;
};

}  // namespace

TEST_F(ExtractResults, SignalsAreMadeOnceAndRaisedOnlyByAStrongerRun) {
    RunOnce();
    far->simElementID = -1;
    ASSERT_TRUE(lib.ExtractResults());
    EXPECT_TRUE(lib.ResultsExtracted());
    EXPECT_EQ(far->signals, nullptr);
    ASSERT_NE(near->signals, nullptr);
    const e_ReceivedSignal_* first = SignalFrom(near, "AP");
    ASSERT_EQ(first, near->signals);
    EXPECT_EQ(first->next, nullptr);
    EXPECT_EQ(first->receivedPathLoss_dB, 0);
    EXPECT_GE(first->receivedPathCount, 1);
    EXPECT_DOUBLE_EQ(first->receivedPower_dBm, first->receivedPower_dBW + 30);
    double strong = first->receivedPower_dBW;

    ap->power = 0.01;
    RunOnce();
    ASSERT_TRUE(lib.ExtractResults());
    EXPECT_DOUBLE_EQ(near->signals->receivedPower_dBW, strong);
    EXPECT_EQ(near->signals->next, nullptr);

    ap->power = 1.0;
    near->signals->expectedPathLoss_dB = 60;
    RunOnce();
    ASSERT_TRUE(lib.ExtractResults());
    EXPECT_NEAR(near->signals->receivedPower_dBW, strong + 10, 1e-6);
    // The transmit power in dB minus the received power, with the gains of both ends.
    EXPECT_NEAR(near->signals->receivedPathLoss_dB, 0 - (strong + 10) + 3, 1e-6);
}

TEST_F(ExtractResults, TenRunsOnOneFacadeLeaveNothingBehind) {
    for (int run = 0; run < 10; ++run) {
        RunOnce();
        std::vector<int> volumeIds;
        for (Volume* volume :
             static_cast<OpticElement::Volumes&>(*lib.GetEvaluation()->GetSystem())) {
            volumeIds.push_back(volume->GetSimObjectID());
        }
        EXPECT_FALSE(Interface::GetInterfaceList().empty());
        ASSERT_TRUE(lib.ExtractResults());
        EXPECT_EQ(lib.GetEvaluation(), nullptr);
        EXPECT_EQ(COUNTBEAMS(), 0);
        EXPECT_TRUE(Interface::GetInterfaceList().empty());
        EXPECT_TRUE(TestPoint::GetTestPointList().empty());
        EXPECT_TRUE(EMSource::GetSourceList().empty());
        for (int id : volumeIds) EXPECT_EQ(Volume::GetVolumeFromId(id), nullptr);
    }
    EXPECT_EQ(near->signals->next, nullptr);
}
