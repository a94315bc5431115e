#include <gtest/gtest.h>

#include <vector>

#include "WorkingDirectory.h"
#include "control/BatchEvent.h"
#include "control/OpticElement.h"
#include "documents/ElementGroup.h"
#include "documents/SimDocumentSaveLoad.h"
#include "documents/SimulationData.h"
#include "documents/SimulationDocument.h"
#include "propagation/FreqResponseArray.h"
#include "radiation/EMSource.h"

namespace {

// A document whose scene is a preset building with one wall and one source, built as a
// client's batch would build it.
class ElementGroupTest : public ::testing::Test {
protected:
    void SetUp() override {
        document.Initialize();
        data = document.GetTopData();
        system = NewSystem();
        std::vector<int> ids;
        BatchEvent wall(BatchEvent::eventWall);
        wall.AddPoint(4.0, -4.0, 0.0);
        wall.AddPoint(4.0, 4.0, 0.0);
        BatchEvent source(BatchEvent::eventSource);
        source.AddPoint(0.0, 0.0, 1.5);
        ASSERT_TRUE(system->ReceiveBatchEvent(wall, ids));
        ASSERT_TRUE(system->ReceiveBatchEvent(source, ids));
    }

    // A new preset building, placed in the scene.
    OpticElement* NewSystem() {
        auto* element = new OpticElement();
        data->GetElements().push_back(element);
        data->AddChild(element);
        element->Initialize();
        element->SetupNewElement(OpticElement::GetNewElementIndex("Building"), nullptr);
        element->setQuickSet(true);
        element->QuickSetToChildren(true);
        return element;
    }

    WorkingDirectory working;
    SimulationDocument document;
    SimulationData* data = nullptr;
    OpticElement* system = nullptr;
};

TEST_F(ElementGroupTest, StagesReachEveryElementAndRemovedElementsGo) {
    OpticElement* second = NewSystem();
    EXPECT_TRUE(data->ResetDetection());
    EXPECT_TRUE(data->InitialTransmit(true));
    // Only the first system has a source to launch from.
    EXPECT_TRUE(data->TransmitSourceToVolume());
    EXPECT_TRUE(data->ClearReceivedRadiation());
    EXPECT_FALSE(second->TransmitSourceToVolume());

    const int secondId = second->GetSimObjectID();
    ASSERT_TRUE(data->RemoveElement(second));
    EXPECT_EQ(SimObject::GetObjectGlobally(secondId), nullptr);
    EXPECT_EQ(data->GetElements().size(), 1u);
    EXPECT_FALSE(data->RemoveElement(second));

    SimulationData empty;
    empty.Initialize();
    EXPECT_FALSE(empty.TransmitSourceToVolume());
    EXPECT_FALSE(empty.TransmitVolumeToInterface(nullptr));
}

TEST_F(ElementGroupTest, ASceneSavesAndLoadsBackEqual) {
    SimDocumentSaveLoad files;
    const std::string path = working.dir.File("scene.xml");
    ASSERT_TRUE(files.SaveSim(&document, path, false));

    SimulationDocument loaded;
    loaded.Initialize();
    ASSERT_TRUE(files.ReadSimFile(path, &loaded));
    SimulationData* scene = loaded.GetTopData();
    ASSERT_EQ(scene->GetElements().size(), 1u);
    OpticElement* reloaded = scene->GetElements().front();
    EXPECT_EQ(static_cast<OpticElement::Sources&>(*reloaded).size(), 1u);
    EXPECT_EQ(static_cast<OpticElement::Barriers&>(*reloaded).size(),
              static_cast<OpticElement::Barriers&>(*system).size());
    // The system reads back its settings and its loss tables; its structures are rebuilt.
    std::vector<Parameter*>& settings = system->GetQuickParameters();
    ASSERT_EQ(reloaded->GetQuickParameters().size(), settings.size());
    for (Parameter* setting : settings) {
        Parameter* read = reloaded->GetParameterp(setting->getName());
        ASSERT_NE(read, nullptr) << setting->GetName();
        EXPECT_TRUE(read->CheckEq(setting)) << setting->GetName();
    }
    ASSERT_NE(reloaded->GetWallResponse(), nullptr);
    EXPECT_EQ(reloaded->GetWallResponse()->size(), system->GetWallResponse()->size());
    EXPECT_EQ(reloaded->GetChildCount(), system->GetChildCount());

    // Saved again, the tables are not written twice.
    ASSERT_TRUE(loaded.LoadDataToDocument(false));
    CElement* element = loaded.findElementp("SimulationData")->findElementp("OpticElement");
    EXPECT_FALSE(element->hasElement("FreqResponse"));
}

}  // namespace
