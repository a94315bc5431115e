#include <gtest/gtest.h>

#include <string>

#include "WorkingDirectory.h"
#include "documents/DocumentChange.h"
#include "documents/DocumentConverter.h"
#include "documents/SimDocumentSaveLoad.h"
#include "documents/SimulationData.h"
#include "documents/SimulationDocument.h"
#include "documents/SimulationResults.h"

namespace {

constexpr eAttrNameId initAttributes[] = {A_INITSWDESC, A_INITBUILDTSMP, A_INITSAVETSMP};
constexpr eAttrNameId lastAttributes[] = {A_LASTSWDESC, A_LASTBUILDTSMP, A_LASTSAVETSMP};

std::string AttributeText(CElement* element, eAttrNameId id) {
    const char* text = element->getAttributeValue(id);
    return text != nullptr ? text : "";
}

// A document in a fresh current directory whose scene has a few parameters and whose
// results exist, ready to be written to its directory.
class SimulationDocumentTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(working.dir.path.empty());
        document.Initialize();
        document.SetName("office");
        document.SetFileDir(working.dir.path.string());
        document.SetFileName("office.xml");
        SimulationData* data = document.GetTopData();
        data->SetQuickParameterValue(PN_FREQ, 2.4, PU_HZ, PM_GIGA);
        data->SetQuickParameterValue(PN_TRCMIN, -150, PU_DB);
        data->SetQuickParameterValue(PN_SYSTYP, PV_BUILDING);
        document.AddSimulationResults(nullptr);
    }

    // The saved element of the scene's parameter of that name.
    CElement* ParameterElement(eParamName name) {
        Parameter* parameter = document.GetTopData()->GetParameterp(name);
        CElement* data = document.findElementp("SimulationData");
        return data->findSubElementWithAttribute<int>(A_SIMOBJID, parameter->GetSimObjectID());
    }

    WorkingDirectory working;
    SimulationDocument document;
};

TEST_F(SimulationDocumentTest, SavesStampTheFirstAndTheLastSave) {
    ASSERT_TRUE(document.LoadDataToDocument(false));
    ASSERT_TRUE(document.LoadDocumentToFile());
    for (int i = 0; i < 3; i++) {
        ASSERT_TRUE(document.hasAttribute(initAttributes[i]));
        EXPECT_EQ(AttributeText(&document, initAttributes[i]),
                  AttributeText(&document, lastAttributes[i]));
        EXPECT_FALSE(document.findAttributep(lastAttributes[i])->getEdit());
    }
    EXPECT_NE(AttributeText(&document, A_INITSWDESC).find("Fenwave"), std::string::npos);
    EXPECT_EQ(AttributeText(&document, A_INITSAVETSMP).back(), '\n');

    // A second save leaves what the first one wrote and renews the rest.
    document.setAttribute(A_INITSAVETSMP, "first");
    document.setAttribute(A_LASTSAVETSMP, "earlier");
    ASSERT_TRUE(document.LoadDocumentToFile());
    EXPECT_EQ(AttributeText(&document, A_INITSAVETSMP), "first");
    EXPECT_NE(AttributeText(&document, A_LASTSAVETSMP), "earlier");

    SimulationDocument reread;
    reread.SetFileDir(document.GetFileDir());
    reread.SetFileName(document.GetFileName());
    ASSERT_TRUE(reread.LoadFileToDocument());
    for (eAttrNameId id : lastAttributes) EXPECT_TRUE(reread.hasAttribute(id));

    SimulationDocument missing;
    missing.SetFileDir(document.GetFileDir());
    missing.SetFileName("none.xml");
    EXPECT_FALSE(missing.LoadFileToDocument());
    EXPECT_EQ(missing.elementCount(), 0);
}

TEST_F(SimulationDocumentTest, TopDataIsMadeOnceAndResultsOnlyWhenAdded) {
    SimulationDocument fresh;
    fresh.Initialize();
    EXPECT_EQ(fresh.GetTopResults(), nullptr);
    SimulationData* top = fresh.GetTopData();
    EXPECT_EQ(fresh.GetTopData(), top);
    EXPECT_EQ(fresh.SimulationDocument::DataVector::size(), 1u);
    EXPECT_EQ(fresh.GetChildCount(), 1);
    EXPECT_EQ(top->GetParent(), &fresh);

    ASSERT_TRUE(fresh.AddSimulationResults(nullptr));
    EXPECT_NE(fresh.GetTopResults(), nullptr);
    EXPECT_EQ(fresh.GetTopResults()->GetTypeStr(), "SimulationResults");
}

TEST_F(SimulationDocumentTest, ChangesGoThroughTheElementIntoTheObject) {
    ASSERT_TRUE(document.LoadDataToDocument(false));
    CElement* frequency = ParameterElement(PN_FREQ);
    ASSERT_NE(frequency, nullptr);
    Parameter* parameter = document.GetTopData()->GetParameterp(PN_FREQ);
    const int id = parameter->GetSimObjectID();

    SimObject* changed = nullptr;
    DocumentChange multiplier(id, "Parameter", "multiplier", "", "kilo");
    ASSERT_TRUE(document.ProcessChange(&multiplier, &changed));
    EXPECT_EQ(changed, parameter);
    EXPECT_EQ(AttributeText(frequency, A_MULT), "PM_KILO");
    EXPECT_EQ(parameter->getMult(), PM_KILO);

    // Unknown attributes, unknown multipliers and ids that match nothing change nothing.
    CElement before;
    before.duplicate(frequency);
    DocumentChange unknown(id, "Parameter", "no such attribute", "", "1");
    DocumentChange badMultiplier(id, "Parameter", "multiplier", "", "kilogram");
    DocumentChange elsewhere(id + 10000, "Parameter", "multiplier", "", "Mega");
    EXPECT_FALSE(document.ProcessChange(&unknown, &changed));
    EXPECT_FALSE(document.ProcessChange(&badMultiplier, &changed));
    EXPECT_FALSE(document.ProcessChange(&elsewhere, &changed));
    EXPECT_TRUE(frequency->equalTo(&before));

    SimulationData* data = document.GetTopData();
    DocumentChange rename(data->GetSimObjectID(), "SimulationData", "Name", "", "ground floor");
    ASSERT_TRUE(document.ProcessChange(&rename, &changed));
    EXPECT_EQ(changed, data);
    EXPECT_EQ(data->GetName(), "ground floor");
    EXPECT_EQ(DocumentChange(id, "Parameter").changeType, DocumentChange::CHANGE_NAME);
    EXPECT_EQ(multiplier.changeType, DocumentChange::CHANGE_VALUE);
}

TEST_F(SimulationDocumentTest, ObjectsAreFoundByTheIdsOfTheirElements) {
    ASSERT_TRUE(document.LoadDataToDocument(false));
    SimulationData* data = document.GetTopData();
    EXPECT_EQ(document.GetSimObject(data->GetSimObjectID()), data);
    Parameter* power = data->GetParameterp(PN_TRCMIN);
    EXPECT_EQ(document.GetSimObject(power->GetSimObjectID()), power);
    EXPECT_EQ(document.GetSimObject(-5), nullptr);

    // Fresh ids are ids of no live object, and differ from each other.
    CElement* element = ParameterElement(PN_TRCMIN);
    ASSERT_TRUE(document.CheckSimObjectID(&document));
    int rootId = 0;
    int parameterId = 0;
    ASSERT_TRUE(document.getAttributeValue(A_SIMOBJID, rootId));
    ASSERT_TRUE(element->getAttributeValue(A_SIMOBJID, parameterId));
    EXPECT_NE(rootId, parameterId);
    EXPECT_EQ(SimObject::GetObjectGlobally(rootId), nullptr);
    EXPECT_EQ(SimObject::GetObjectGlobally(parameterId), nullptr);
    EXPECT_EQ(document.GetSimObject(power->GetSimObjectID()), nullptr);
}

TEST_F(SimulationDocumentTest, ADocumentSavesAndLoadsBackEqual) {
    SimDocumentSaveLoad files;
    const std::string path = working.dir.File("saved.xml");
    ASSERT_TRUE(files.SaveSim(&document, path, false));
    EXPECT_TRUE(document.TestFileName("saved.xml"));
    EXPECT_TRUE(document.TestFileDir(working.dir.path.string()));

    SimulationDocument loaded;
    loaded.Initialize();
    ASSERT_TRUE(files.ReadSimFile(path, &loaded));
    EXPECT_TRUE(loaded.CheckEq(&document));
    EXPECT_NE(loaded.GetTopResults(), nullptr);
    int minPower = 0;
    sParamDesc* desc = nullptr;
    ASSERT_TRUE(loaded.GetTopData()->GetParameterValue(PN_TRCMIN, minPower, &desc));
    EXPECT_EQ(minPower, -150);
    EXPECT_EQ(desc->units, PU_DB);

    std::string text;
    ASSERT_TRUE(DocumentConverter::DocumentToText(&document, text));
    SimulationDocument extracted;
    extracted.Initialize();
    ASSERT_TRUE(files.ExtractSimDocument(text, &extracted));
    EXPECT_TRUE(extracted.CheckEq(&document));
    EXPECT_FALSE(files.ExtractSimDocument("not xml <", &extracted));
    EXPECT_FALSE(files.ReadSimFile(working.dir.File("missing.xml"), &extracted));
}

}  // namespace
