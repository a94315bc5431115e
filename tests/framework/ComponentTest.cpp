#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <memory>
#include <string>
#include <vector>

#include "documents/Document.h"
#include "documents/WorkingDirectory.h"
#include "framework/Component.h"
#include "framework/Parameter.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Layout.h"
#include "support/LogCapture.h"
#include "support/SampleNode.h"
#include "support/TempDir.h"

namespace {

const eParamValue pointValue = static_cast<eParamValue>(43);  // "point"

// A root with two levels of nodes, each holding parameters of every kind.
std::unique_ptr<SampleNode> BuildTree() {
    auto root = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "root"));
    root->SetQuickParameterValue(PN_TYP, pointValue);
    root->SetParameterValue(PN_FREQ, 2.4, PU_HZ, PM_GIGA);
    root->SetParameterValue(PN_FNAM, std::string("/data/maps/office.osm"));
    for (int i = 0; i < 3; i++) {
        SampleNode* node = SampleNode::MakeUnder(root.get(), "node" + std::to_string(i));
        node->SetParameterValue(PN_TRLIM, 10 + i);
        node->SetQuickParameterValue(PN_SHOW, i % 2 == 0);
        node->SetParameterValue(PN_VAL, 0.5 * i, PU_M, PM_NON, 1);
        node->SetParameterValue(PN_VAL, 1.5 * i, PU_M, PM_MILLI, 2);
        SampleNode* leaf = SampleNode::MakeUnder(node, "leaf");
        leaf->SetParameterValue(PN_RAYGAP, 0.25f);
    }
    return root;
}

std::unique_ptr<SampleNode> LoadTree(CElement* element) {
    auto loaded = std::make_unique<SampleNode>();
    loaded->Initialize();
    if (!loaded->FromXml(element)) return nullptr;
    return loaded;
}

double DoubleValue(Component& component, eParamName name) {
    double value = -1;
    component.GetParameterValue(name, value);
    return value;
}

}  // namespace

TEST(ComponentTest, InitializeMakesTheStandardChildrenOnce) {
    Component component;
    ASSERT_TRUE(component.Initialize());
    auto* centre = dynamic_cast<Coordinates*>(component.GetChildNamed("centrePoint"));
    auto* start = dynamic_cast<Coordinates*>(component.GetChildNamed("startPoint"));
    auto* heading = dynamic_cast<Direction*>(component.GetChildNamed("heading"));
    ASSERT_NE(centre, nullptr);
    ASSERT_NE(start, nullptr);
    ASSERT_NE(heading, nullptr);
    EXPECT_DOUBLE_EQ(heading->GetLength(), 1.0);
    EXPECT_EQ(component.GetChildCount(), 3);

    component.Initialize();
    EXPECT_EQ(component.GetChildCount(), 3);
    EXPECT_EQ(component.GetChildNamed("centrePoint"), centre);
}

TEST(ComponentTest, ATreeWithParametersSurvivesAFile) {
    WorkingDirectory directory;
    std::unique_ptr<SampleNode> original = BuildTree();
    Document saved;
    ASSERT_TRUE(original->ToXml(&saved, false));
    std::string path = directory.dir.File("tree.xml");
    ASSERT_TRUE(saved.write(path));

    Document read;
    ASSERT_TRUE(read.read(path));
    std::unique_ptr<SampleNode> loaded = LoadTree(&read);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(original->CheckEq(loaded.get()));
    EXPECT_TRUE(loaded->CheckEq(static_cast<Component*>(original.get())));

    EXPECT_DOUBLE_EQ(DoubleValue(*loaded, PN_FREQ), 2.4e9);
    ASSERT_EQ(loaded->GetQuickParameters().size(), 1u);
    auto* node = dynamic_cast<SampleNode*>(loaded->GetChildNamed("node2"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetCount(PN_VAL), 2);
    double milli = 0;
    EXPECT_TRUE(node->GetParameterIndexValue(PN_VAL, 2, milli));
    EXPECT_DOUBLE_EQ(milli, 3.0e-3);
    EXPECT_TRUE(node->IsQuickSetParam(node->GetParameterp(PN_SHOW)->GetSimObjectID()));

    // A changed value anywhere in the tree is found.
    LogCapture log;
    node->UpdateParameterValue(PN_TRLIM, 99);
    EXPECT_FALSE(original->CheckEq(loaded.get()));
    EXPECT_TRUE(log.Contains("child of root named node2"));

    // Loading replaces a tree's own parameters; the standard children are not doubled.
    auto target = std::make_unique<SampleNode>();
    target->Initialize();
    target->SetParameterValue(PN_RAYGAP, 9.0);
    ASSERT_TRUE(target->FromXml(&read));
    EXPECT_EQ(target->GetParameterp(PN_RAYGAP), nullptr);
    EXPECT_EQ(target->GetChildCount(), 3 + 3 + 3);
}

TEST(ComponentTest, TheFileListsAttributesByIdAndElementsByNameAndASecondSaveKeepsIt) {
    std::unique_ptr<SampleNode> tree = BuildTree();
    Document document;
    tree->ToXml(&document, false);
    std::string text;
    ASSERT_TRUE(document.writeToString(text));
    tree->ToXml(&document, false);
    std::string second;
    document.writeToString(second);
    EXPECT_EQ(second, text);

    tinyxml2::XMLDocument parsed;
    ASSERT_EQ(parsed.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
    const tinyxml2::XMLElement* root = parsed.RootElement();
    ASSERT_NE(root, nullptr);
    // Standard children, parameters and nodes follow by element name, whatever their ids.
    std::vector<std::string> names;
    for (auto* child = root->FirstChildElement(); child; child = child->NextSiblingElement()) {
        names.push_back(child->Name());
    }
    std::vector<std::string> expected = {"Coordinates", "Coordinates", "Direction",
                                         "Parameter",   "Parameter",   "Parameter",
                                         "SampleNode",  "SampleNode",  "SampleNode"};
    EXPECT_EQ(names, expected);
    std::vector<std::string> attributes;
    const tinyxml2::XMLElement* parameter = root->FirstChildElement("Parameter");
    for (auto* attribute = parameter->FirstAttribute(); attribute; attribute = attribute->Next()) {
        attributes.push_back(attribute->Name());
    }
    std::vector<std::string> ordered = {"A_SIMOBJID",  "A_OBJTYP", "A_OBJTYPID", "A_NAME",
                                        "A_OBJNAMEID", "A_CAPT",   "A_QIKSET",   "A_STOTYPE",
                                        "A_PARNAME",   "A_VAL",    "A_PARTYPE"};
    EXPECT_EQ(attributes, ordered);

    // A removed parameter leaves the element at the next save.
    const int count = document.elementCount();
    tree->RemoveParameter(PN_FNAM);
    tree->ToXml(&document, false);
    EXPECT_EQ(document.elementCount(), count - 1);
}

TEST(ComponentTest, IndexedParametersOfOneName) {
    Component component;
    component.Initialize();
    EXPECT_EQ(component.GetMinIndex(PN_VAL), -1);
    component.SetParameterValue(PN_VAL, 1.0, PU_NON, PM_NON, 1);
    component.SetParameterValue(PN_VAL, 2.0, PU_NON, PM_NON, 2);
    EXPECT_EQ(component.GetCount(PN_VAL), 2);
    EXPECT_EQ(component.GetMinIndex(PN_VAL), 1);
    EXPECT_EQ(component.GetMaxIndex(PN_VAL), 2);
    EXPECT_EQ(component.GetParameterOcurrencep(PN_VAL, 1), component.GetParameterIndexp(PN_VAL, 2));
    EXPECT_EQ(component.GetParameterOcurrencep(PN_VAL, 2), nullptr);

    // Writing index 1 again changes that parameter only.
    component.SetParameterValue(PN_VAL, 3.0, PU_NON, PM_NON, 1);
    EXPECT_EQ(component.GetCount(PN_VAL), 2);
    double value = 0;
    EXPECT_TRUE(component.GetParameterIndexValue(PN_VAL, 1, value));
    EXPECT_DOUBLE_EQ(value, 3.0);
    EXPECT_FALSE(component.GetParameterIndexValue(PN_VAL, 3, value));

    EXPECT_TRUE(component.UpdateParameterIndex(PN_VAL, 5));
    EXPECT_EQ(component.GetMaxIndex(PN_VAL), 5);
    EXPECT_FALSE(component.UpdateParameterIndex(PN_FREQ, 5));
    // Each parameter is a child as well.
    EXPECT_EQ(component.GetChildCount(), 5);
}

TEST(ComponentTest, ParametersAreSetReadTestedAndRemoved) {
    Component component;
    component.Initialize();
    EXPECT_TRUE(component.SetParameterValue(PN_FREQ, 2.5, PU_HZ, PM_KILO));
    EXPECT_DOUBLE_EQ(DoubleValue(component, PN_FREQ), 2500.0);
    sParamDesc* desc = nullptr;
    double raw = 0;
    EXPECT_TRUE(component.GetParameterValue(PN_FREQ, raw, &desc));
    EXPECT_DOUBLE_EQ(raw, 2.5);
    EXPECT_EQ(desc, component.GetParameterp(PN_FREQ)->getDesc());
    EXPECT_TRUE(component.TestParameterValue(PN_FREQ, 2500.0));
    EXPECT_FALSE(component.TestParameterValue(PN_TRLIM, 1));

    Parameter* frequency = component.GetParameterp(PN_FREQ);
    EXPECT_EQ(component.GetParameterp(std::string("frequency")), frequency);
    EXPECT_EQ(component.GetParameterp(std::string("PN_FREQ")), frequency);

    // An update keeps units and multiplier unless new ones are given.
    EXPECT_FALSE(component.UpdateParameterValue(PN_TRLIM, 3));
    EXPECT_TRUE(component.UpdateParameterValue(PN_FREQ, 3.0));
    EXPECT_DOUBLE_EQ(DoubleValue(component, PN_FREQ), 3000.0);
    EXPECT_TRUE(component.UpdateParameterMult(PN_FREQ, PM_MEGA));
    EXPECT_TRUE(component.UpdateParameterUnits(PN_FREQ, PU_NON));
    EXPECT_DOUBLE_EQ(DoubleValue(component, PN_FREQ), 3.0e6);
    EXPECT_EQ(frequency->getUnits(), PU_NON);

    // A failed read still hands out the descriptor.
    auto* empty = new Parameter();
    empty->setParName(PN_TRLIM);
    empty->Initialize();
    ASSERT_TRUE(component.AddParameter(empty, false));
    desc = nullptr;
    int count = 7;
    EXPECT_FALSE(component.GetParameterValue(PN_TRLIM, count, &desc));
    EXPECT_EQ(desc, empty->getDesc());
    EXPECT_EQ(count, 7);

    EXPECT_TRUE(component.SetParameterValRange(PN_TRLIM, 3, 9));
    int first = 0;
    int last = 0;
    EXPECT_TRUE(empty->getParamLimits(first, last));
    EXPECT_EQ(last, 9);

    int children = component.GetChildCount();
    int emptyId = empty->GetSimObjectID();
    EXPECT_TRUE(component.RemoveParameter(empty));
    EXPECT_EQ(SimObject::GetObjectGlobally(emptyId), nullptr);
    EXPECT_FALSE(component.RemoveParameter(PN_TRLIM));
    EXPECT_TRUE(component.RemoveParameter(PN_FREQ));
    EXPECT_EQ(component.GetParameterp(PN_FREQ), nullptr);
    EXPECT_EQ(component.GetChildCount(), children - 2);
}

TEST(ComponentTest, QuickParametersMarkTheComponentAndAloneStayForAClient) {
    Component component;
    component.Initialize();
    EXPECT_FALSE(component.GetIsQuickSet());
    component.SetParameterValue(PN_TRLIM, 4);
    component.SetUpdateQuickSet(false, false);

    ASSERT_TRUE(component.SetQuickParameterValue(PN_TYP, pointValue));
    Parameter* type = component.GetParameterp(PN_TYP);
    EXPECT_TRUE(component.GetIsQuickSet());
    EXPECT_TRUE(component.GetUpdateQuickSet());
    EXPECT_TRUE(type->getQuickSet());
    EXPECT_TRUE(component.IsQuickSetParam(type->GetSimObjectID()));
    EXPECT_FALSE(component.IsQuickSetParam(component.GetParameterp(PN_TRLIM)->GetSimObjectID()));

    // Setting it again, or adding it again, lists it once.
    component.SetQuickParameterValue(PN_TYP, static_cast<eParamValue>(44));
    component.AddQuickParameter(type);
    EXPECT_EQ(component.GetQuickParameters().size(), 1u);
    EXPECT_FALSE(component.AddQuickParameter(nullptr));

    sParamDesc desc;
    desc.units = PU_M;
    desc.mult = PM_KILO;
    component.SetQuickParameterValue(PN_VAL, 1.5, &desc, 3);
    Parameter* value = component.GetParameterIndexp(PN_VAL, 3);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->getUnits(), PU_M);
    EXPECT_EQ(value->getMult(), PM_KILO);
    EXPECT_EQ(component.GetQuickParameters().size(), 2u);

    EXPECT_TRUE(component.IsReSimParam(PN_TRLIM));
    EXPECT_FALSE(component.IsReSimParam(PN_RAYGAP));

    // What a client sends: only the quick-set parameters stay.
    auto* expanded = new SampleNode();
    expanded->Initialize();
    component.AddChild(expanded);
    ASSERT_TRUE(component.LeaveOnlyQuickSetParams());
    EXPECT_EQ(component.GetChildCount(), 2);
    EXPECT_EQ(component.GetParameterp(PN_TRLIM), nullptr);
    EXPECT_EQ(component.GetCount(PN_TRLIM), 0);
}

TEST(ComponentTest, BackupAndRestoreBringBackTheValues) {
    Component component;
    component.Initialize();
    EXPECT_TRUE(component.RestoreParameters());  // nothing kept: nothing happens
    EXPECT_EQ(component.GetChildCount(), 3);

    component.SetParameterValue(PN_FREQ, 2.5, PU_HZ, PM_GIGA);
    component.SetParameterValue(PN_VAL, 7, PU_M, PM_NON, 4);
    ASSERT_TRUE(component.BackupParameters());
    component.SetParameterValue(PN_FREQ, 5.0, PU_NON, PM_MEGA);
    component.RemoveParameter(PN_VAL);

    ASSERT_TRUE(component.RestoreParameters());
    EXPECT_DOUBLE_EQ(DoubleValue(component, PN_FREQ), 2.5e9);
    EXPECT_EQ(component.GetParameterp(PN_FREQ)->getUnits(), PU_HZ);
    Parameter* value = component.GetParameterIndexp(PN_VAL, 4);
    ASSERT_NE(value, nullptr);
    int restored = 0;
    EXPECT_TRUE(value->getValue(&restored));
    EXPECT_EQ(restored, 7);
    EXPECT_EQ(value->getUnits(), PU_M);

    // The copies are gone after a restore: a second one changes nothing.
    component.SetParameterValue(PN_FREQ, 1.0);
    component.RestoreParameters();
    EXPECT_DOUBLE_EQ(DoubleValue(component, PN_FREQ), 1.0);
}

TEST(ComponentTest, PassParameterCopiesOrMakesTheTarget) {
    Component from;
    Component to;
    from.Initialize();
    to.Initialize();
    EXPECT_FALSE(Component::PassParameter(PN_FREQ, &from, &to, PN_FREQ));
    EXPECT_EQ(to.GetParameterp(PN_FREQ), nullptr);
    EXPECT_FALSE(Component::PassParameter(PN_FREQ, nullptr, &to, PN_FREQ));

    from.SetQuickParameterValue(PN_FREQ, 2.5, PU_HZ, PM_GIGA);
    ASSERT_TRUE(Component::PassParameter(PN_FREQ, &from, &to, PN_VAL));
    Parameter* made = to.GetParameterp(PN_VAL);
    ASSERT_NE(made, nullptr);
    EXPECT_NE(made, from.GetParameterp(PN_FREQ));
    EXPECT_EQ(made->GetParent(), &to);
    EXPECT_TRUE(made->TestName("value"));
    EXPECT_DOUBLE_EQ(DoubleValue(to, PN_VAL), 2.5e9);
    EXPECT_TRUE(to.IsQuickSetParam(made->GetSimObjectID()));

    // An existing target takes over the value and keeps its identity.
    from.SetParameterValue(PN_TRLIM, 12);
    to.SetParameterValue(PN_TRLIM, 3);
    Parameter* existing = to.GetParameterp(PN_TRLIM);
    ASSERT_TRUE(Component::PassParameter(PN_TRLIM, &from, &to, PN_TRLIM));
    EXPECT_EQ(to.GetParameterp(PN_TRLIM), existing);
    EXPECT_EQ(to.GetCount(PN_TRLIM), 1);
    EXPECT_TRUE(to.TestParameterValue(PN_TRLIM, 12));
}

TEST(ComponentTest, EmptyDropsParametersAndChildren) {
    std::unique_ptr<SampleNode> tree = BuildTree();
    tree->BackupParameters();
    int frequencyId = tree->GetParameterp(PN_FREQ)->GetSimObjectID();
    ASSERT_TRUE(tree->Empty());
    EXPECT_EQ(tree->GetChildCount(), 0);
    EXPECT_EQ(tree->GetParameterp(PN_FREQ), nullptr);
    EXPECT_TRUE(tree->GetQuickParameters().empty());
    EXPECT_EQ(SimObject::GetObjectGlobally(frequencyId), nullptr);
    EXPECT_TRUE(tree->RestoreParameters());
    EXPECT_EQ(tree->GetChildCount(), 0);
}

TEST(ComponentTest, ALayoutIsSavedAndLoadedWithItsOwner) {
    Component original;
    original.Initialize();
    ASSERT_TRUE(original.InitLayout());
    Coordinates centre(1.0, 2.0, 3.0);
    original.GetLayout()->setToCentre(centre);
    Document document;
    original.ToXml(&document, false);
    ASSERT_TRUE(document.hasElement("Layout"));

    for (bool declared : {false, true}) {
        Component loaded;
        loaded.SetHasLayout(declared);
        loaded.Initialize();
        ASSERT_TRUE(loaded.FromXml(&document));
        ASSERT_NE(loaded.GetLayout(), nullptr);
        EXPECT_EQ(loaded.GetLayout()->GetParent(), &loaded);
        EXPECT_EQ(loaded.GetChildTyped("Layout"), loaded.GetLayout());
        ASSERT_NE(loaded.GetGlobalTransformation(), nullptr);
        Coordinates where;
        loaded.GetLayout()->GetCentre(where);
        EXPECT_DOUBLE_EQ(where.Get(0, false), 1.0);
        EXPECT_DOUBLE_EQ(where.Get(2, false), 3.0);
        // Removing the layout child forgets the layout.
        EXPECT_TRUE(loaded.RemoveChildrenType("Layout", true));
        EXPECT_EQ(loaded.GetLayout(), nullptr);
    }
}

TEST(ComponentTest, SnapPointRoundsToTheGrid) {
    Coordinates point(1.26, -0.74, 3.0);
    ASSERT_TRUE(Component::snapPoint(&point, 2, 0.5));
    EXPECT_DOUBLE_EQ(point.Get(0, false), 1.5);
    EXPECT_DOUBLE_EQ(point.Get(1, false), -0.5);
    EXPECT_DOUBLE_EQ(point.Get(2, false), 3.0);
    EXPECT_FALSE(Component::snapPoint(&point, 2, 0.0));
    EXPECT_FALSE(Component::snapPoint(nullptr, 2, 0.5));
}
