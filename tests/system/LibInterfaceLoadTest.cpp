#include <gtest/gtest.h>

#include <cmath>

#include "control/OpticElement.h"
#include "control/SimEvaluation.h"
#include "framework/Component.h"
#include "support/LogCapture.h"
#include "support/SystemScene.h"
#include "system/LibInterface.h"
#include "system/System_.h"

namespace {

Component* ChildComponent(SimObject* parent, const char* type) {
    return dynamic_cast<Component*>(parent->GetChildTyped(type));
}

// A facade holding the scene's record, loaded into a new evaluation it does not run.
struct LoadedScene {
    explicit LoadedScene(SystemScene& scene) {
        lib.SetSystem(new System_(scene.Release()));
        eval.Initialize();
        loaded = lib.LoadSystemToEval(&eval);
        element = eval.GetSystem();
    }

    LibInterface lib;
    SimEvaluation eval;
    bool loaded = false;
    OpticElement* element = nullptr;
};

}  // namespace

TEST(LibInterfaceLoad, RecordValuesReachTheElementAndItsChildren) {
    SystemScene scene;
    scene.record->pathLoss_model = 7;
    scene.AddWall(3, -5, 3, 5, 1);
    e_AccessPoint_* ap = scene.AddAccessPoint("AP-1", 0, 0);
    ap->frequency_GHz = -1;
    ap->channel = 6;
    scene.AddSamplePoint("SP-1", 6, 0);
    LoadedScene load(scene);
    ASSERT_TRUE(load.loaded);
    ASSERT_NE(load.element, nullptr);

    EXPECT_TRUE(load.element->TestParameterValue(PN_VOLPROPMDL, PV_FREESPACE));
    EXPECT_TRUE(load.element->TestParameterValue(PN_SYSOUT, PV_TRUE));

    Component* wall = ChildComponent(load.element, "Barrier");
    ASSERT_NE(wall, nullptr);
    double base = 0;
    ASSERT_TRUE(wall->GetParameterValue(PN_BARBSE, base));
    EXPECT_DOUBLE_EQ(base, -0.1);

    Component* source = ChildComponent(load.element, "EMSource");
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->GetName(), "AP-1");
    EXPECT_TRUE(load.element->TestParameterValue(PN_FREQBAND, PV_BAND_WIFI24));
    double wavelength = 0;
    ASSERT_TRUE(source->GetParameterValue(PN_LMDA, wavelength));
    EXPECT_NEAR(wavelength, SystemScene::Wavelength(), 1e-9);

    e_SamplePoint_* sp = load.lib.GetSystem()->samplePoints;
    SimObject* point = SimObject::GetObjectGlobally(sp->simElementID);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->GetTypeStr(), "TestPoint");
}

TEST(LibInterfaceLoad, GeographicSystemGivesTheRecordsEarthCentredPositions) {
    SystemScene scene;
    scene.record->isIndoorOnly = false;
    e_SamplePoint_* sp = scene.AddSamplePoint("SP-geo", 0, 0);
    SetVecLLH(&sp->location, 90, 0, 10);
    LoadedScene load(scene);
    ASSERT_TRUE(load.loaded);
    const e_Vector_& where = load.lib.GetSystem()->samplePoints->location;
    EXPECT_NEAR(where.x, 0, 1e-6);
    EXPECT_NEAR(where.y, 6371010, 1e-6);
    EXPECT_NEAR(where.z, 0, 1e-6);
}

TEST(LibInterfaceLoad, EmptySystemWarnsAndStillRunsWhileAMissingOneFails) {
    LogCapture log;
    SystemScene scene;
    scene.AddSamplePoint("alone", 1, 1);
    LibInterface lib;
    lib.SetSystem(new System_(scene.Release()));
    EXPECT_TRUE(lib.BeginUpdate(false, false));
    EXPECT_TRUE(lib.UpdateComplete());
    EXPECT_TRUE(log.Contains("LibInterface::BeginUpdate() - no barriers or buildings\n"));
    EXPECT_TRUE(log.Contains("LibInterface::BeginUpdate() - no APs\n"));
    EXPECT_TRUE(lib.ExtractResults());
    EXPECT_EQ(lib.GetSystem()->samplePoints->signals, nullptr);

    LibInterface empty;
    SimEvaluation eval;
    eval.Initialize();
    EXPECT_FALSE(empty.LoadSystemToEval(&eval));
    EXPECT_TRUE(log.Contains("LibInterface::BeginUpdate() - no system\n"));
    EXPECT_TRUE(log.Contains(
        "LibInterface::BeginUpdate() - loading system from lib to simulation - failed\n"));
}

TEST(LibInterfaceLoad, SystemFilesAreRecognisedAndLoaded) {
    LibInterface lib;
    std::string office = ExampleFile("office.xml");
    std::string missing = "/nonexistent/system.xml";
    EXPECT_TRUE(lib.FileHasSystem(office));
    EXPECT_FALSE(lib.FileHasSystem(missing));
    EXPECT_FALSE(lib.GetSystemFromFile(missing));
    ASSERT_TRUE(lib.GetSystemFromFile(office));
    int walls = 0;
    for (e_Barrier_* wall = lib.GetSystem()->barriers; wall != nullptr; wall = wall->next) ++walls;
    EXPECT_EQ(walls, 41);
}
