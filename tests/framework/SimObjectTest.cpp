#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "documents/CElement.h"
#include "documents/Document.h"
#include "framework/SimObject.h"
#include "support/LogCapture.h"
#include "support/SampleNode.h"

namespace {

// Counts how often the tree asks it to rebuild from its quick parameters.
class RebuildCounter : public SimObject {
public:
    bool QuickSetToChildren(bool force) override {
        rebuilds++;
        return SimObject::QuickSetToChildren(force);
    }
    int rebuilds = 0;
};

// Refuses to load an element named "broken".
class PickyObject : public SimObject {
public:
    PickyObject() { objTypeStr = "PickyObject"; }
    bool FromXml(CElement* element) override {
        std::string name;
        element->getAttributeValue(A_NAME, name);
        return name != "broken" && SimObject::FromXml(element);
    }
};

CElement* AddSub(CElement* parent, const std::string& type, const std::string& name) {
    auto* sub = new CElement(type);
    sub->setAttribute(A_OBJTYP, type);
    sub->setAttribute(A_NAME, name);
    parent->addElement(sub);
    return sub;
}

std::vector<std::string> ChildNames(SimObject& parent) {
    std::vector<std::string> names;
    for (int i = 0; i < parent.GetChildCount(); i++) names.push_back(parent.GetChild(i)->GetName());
    return names;
}

}  // namespace

TEST(SimObjectTest, IdsAscendAndAReinitialisedObjectTakesAFreshOne) {
    SimObject first;
    SimObject second;
    EXPECT_EQ(first.GetSimObjectID(), -1);
    ASSERT_TRUE(first.Initialize());
    ASSERT_TRUE(second.Initialize());
    int firstId = first.GetSimObjectID();
    EXPECT_GT(firstId, 0);  // 0 is reserved
    EXPECT_EQ(second.GetSimObjectID(), firstId + 1);
    EXPECT_EQ(SimObject::GetObjectGlobally(firstId), &first);

    first.Initialize();
    EXPECT_GT(first.GetSimObjectID(), second.GetSimObjectID());
    EXPECT_EQ(SimObject::GetObjectGlobally(firstId), nullptr);
    EXPECT_EQ(SimObject::GetObjectGlobally(first.GetSimObjectID()), &first);

    // The freed id lies behind the scan and is not handed out again.
    SimObject third;
    third.Initialize();
    EXPECT_EQ(third.GetSimObjectID(), first.GetSimObjectID() + 1);
}

TEST(SimObjectTest, IdsStayUniqueWhenManyThreadsCreateObjects) {
    constexpr int threadCount = 4;
    constexpr int perThread = 400;
    std::vector<std::vector<std::unique_ptr<SimObject>>> made(threadCount);
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; t++) {
        threads.emplace_back([&made, t] {
            for (int i = 0; i < perThread; i++) {
                made[t].push_back(std::make_unique<SimObject>());
                made[t].back()->Initialize();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();

    std::set<int> ids;
    std::set<int> renderIds;
    for (const auto& list : made) {
        for (const auto& object : list) {
            ids.insert(object->GetSimObjectID());
            renderIds.insert(object->GetRenderObjectID());
            EXPECT_EQ(SimObject::GetObjectGlobally(object->GetSimObjectID()), object.get());
        }
    }
    EXPECT_EQ(ids.size(), static_cast<size_t>(threadCount * perThread));
    EXPECT_EQ(renderIds.size(), static_cast<size_t>(threadCount * perThread));
    EXPECT_EQ(ids.count(-1), 0u);
}

TEST(SimObjectTest, AddChildNeedsAnInitialisedNewChild) {
    SimObject parent;
    parent.Initialize();
    EXPECT_FALSE(parent.AddChild(nullptr));

    auto* child = new SimObject();
    EXPECT_FALSE(parent.AddChild(child));
    EXPECT_EQ(child->GetParent(), &parent);
    EXPECT_EQ(parent.GetChildCount(), 0);
    EXPECT_EQ(parent.GetChildActionCount(), 0);

    // Initialising registers the child with the parent it already knows.
    child->Initialize();
    EXPECT_EQ(parent.GetChildCount(), 1);
    EXPECT_EQ(parent.GetChild(0), child);
    EXPECT_TRUE(parent.HasChildAction(child));
    EXPECT_FALSE(parent.AddChild(child));
    EXPECT_EQ(parent.GetChildCount(), 1);

    // Children come in id order, whatever order they were added in.
    auto* late = new SimObject();
    auto* early = new SimObject();
    early->Initialize();
    late->Initialize();
    parent.AddChild(late);
    parent.AddChild(early);
    EXPECT_EQ(parent.GetChild(1), early);
}

TEST(SimObjectTest, ChildrenAreFoundByNameTypePositionAndId) {
    SimObject root;
    root.Initialize();
    TypedObject* a = TypedObject::MakeUnder(&root, "Alpha", "one");
    TypedObject* b = TypedObject::MakeUnder(&root, "Beta", "two");
    TypedObject* c = TypedObject::MakeUnder(&root, "Alpha", "three");
    TypedObject* grandchild = TypedObject::MakeUnder(b, "Gamma", "deep");

    EXPECT_EQ(root.GetChildCount(), 3);
    EXPECT_EQ(root.GetChildNamed("three"), c);
    EXPECT_EQ(root.GetChildNamed("deep"), nullptr);
    EXPECT_EQ(root.GetChildTyped("Alpha"), a);
    EXPECT_EQ(root.GetChildTyped("Beta"), b);
    EXPECT_EQ(root.GetChildTyped("alpha"), nullptr);  // exact
    for (bool quick : {true, false}) {
        EXPECT_EQ(root.GetChild(0, quick), a);
        EXPECT_EQ(root.GetChild(2, quick), c);
        EXPECT_EQ(root.GetChild(3, quick), nullptr);  // one past the last
        EXPECT_EQ(root.GetChild(-1, quick), nullptr);
    }
    EXPECT_EQ(root.GetChildWithId(b->GetSimObjectID()), b);
    EXPECT_EQ(root.GetChildWithId(grandchild->GetSimObjectID(), false), nullptr);
    EXPECT_EQ(root.GetChildWithId(grandchild->GetSimObjectID(), true), grandchild);
    EXPECT_EQ(grandchild->GetParent(), b);
}

TEST(SimObjectTest, RemovalKeepsOrDestroysTheChildAndEmptyTakesThemAll) {
    SimObject root;
    root.Initialize();
    TypedObject* kept = TypedObject::MakeUnder(&root, "Alpha", "kept");
    TypedObject* gone = TypedObject::MakeUnder(&root, "Alpha", "gone");
    int goneId = gone->GetSimObjectID();

    EXPECT_TRUE(root.RemoveChild(kept, false));
    EXPECT_EQ(kept->GetParent(), nullptr);
    EXPECT_FALSE(root.HasChildAction(kept));
    EXPECT_EQ(SimObject::GetObjectGlobally(kept->GetSimObjectID()), kept);
    EXPECT_FALSE(root.RemoveChild(kept, false));
    std::unique_ptr<TypedObject> owner(kept);

    EXPECT_TRUE(root.RemoveChild(gone, true));
    EXPECT_EQ(SimObject::GetObjectGlobally(goneId), nullptr);
    EXPECT_EQ(root.GetChildCount(), 0);

    TypedObject::MakeUnder(&root, "Alpha", "x");
    TypedObject::MakeUnder(&root, "Beta", "x");
    TypedObject::MakeUnder(&root, "Beta", "y");
    EXPECT_TRUE(root.RemoveChildrenType("Beta", true));
    EXPECT_EQ(ChildNames(root), (std::vector<std::string>{"x"}));
    EXPECT_FALSE(root.RemoveChildrenType("Beta", true));
    EXPECT_TRUE(root.RemoveChildrenName("x", true));
    EXPECT_EQ(root.GetChildCount(), 0);

    // Empty deletes the whole subtree and keeps the object itself.
    root.SetName("root");
    TypedObject* child = TypedObject::MakeUnder(&root, "Alpha", "child");
    TypedObject* grandchild = TypedObject::MakeUnder(child, "Alpha", "grandchild");
    int ids[] = {child->GetSimObjectID(), grandchild->GetSimObjectID()};
    int rootId = root.GetSimObjectID();
    EXPECT_TRUE(root.Empty());
    EXPECT_EQ(root.GetChildActionCount(), 0);
    for (int id : ids) EXPECT_EQ(SimObject::GetObjectGlobally(id), nullptr);
    EXPECT_EQ(root.GetSimObjectID(), rootId);
    EXPECT_EQ(root.GetName(), "root");
}

TEST(SimObjectTest, AChildDeletedElsewhereLeavesAStaleIdThatLookupsDrop) {
    SimObject root;
    root.Initialize();
    TypedObject* first = TypedObject::MakeUnder(&root, "Alpha", "first");
    TypedObject* second = TypedObject::MakeUnder(&root, "Alpha", "second");
    int firstId = first->GetSimObjectID();
    delete first;

    EXPECT_EQ(SimObject::GetObjectGlobally(firstId), nullptr);
    EXPECT_FALSE(root.HasChildAction(first));
    EXPECT_EQ(root.GetChildCount(), 2);
    EXPECT_EQ(root.GetChild(0, true), nullptr);  // the quick walk hands out the gap
    EXPECT_EQ(root.GetChild(0, false), second);  // the full walk drops it
    EXPECT_EQ(root.GetChildCount(), 1);
    EXPECT_FALSE(root.RemoveNullChildren());

    delete second;
    EXPECT_TRUE(root.RemoveNullChildren());
    EXPECT_EQ(root.GetChildCount(), 0);
}

TEST(SimObjectTest, SavingTwiceIntoOneElementLeavesItUnchanged) {
    SimObject root;
    root.Initialize();
    TypedObject* a = TypedObject::MakeUnder(&root, "Alpha", "a");
    TypedObject::MakeUnder(a, "Beta", "b");
    TypedObject::MakeUnder(&root, "Alpha", "c");

    CElement element;
    ASSERT_TRUE(root.ToXml(&element, false));
    EXPECT_TRUE(root.GetXmlCurrent());
    EXPECT_EQ(element.getName(), "SimObject");
    CElement firstSave;
    firstSave.duplicate(&element);
    CElement* subOfA = element.findSubElementWithAttribute<int>(A_SIMOBJID, a->GetSimObjectID());

    ASSERT_TRUE(root.ToXml(&element, false));
    EXPECT_EQ(element.elementCount(), 2);
    EXPECT_TRUE(element.equalTo(&firstSave));
    // The sub-element was updated in place, not replaced.
    EXPECT_EQ(element.findSubElementWithAttribute<int>(A_SIMOBJID, a->GetSimObjectID()), subOfA);
    // An unnamed object is saved under its type.
    EXPECT_EQ(root.GetName(), "SimObject");

    // A removed child, foreign sub-elements and unsaved children leave at the next save.
    root.RemoveChild(root.GetChild(1), true);
    EXPECT_FALSE(root.GetXmlCurrent());
    element.addElement(new CElement("Stranger"));
    TypedObject::MakeUnder(&root, "Alpha", "hidden")->SetSaveToXML(false);
    root.ToXml(&element, false);
    ASSERT_EQ(element.elementCount(), 1);
    EXPECT_TRUE(element.getElementFromSeq(0)->testAttribute<int>(A_SIMOBJID, a->GetSimObjectID()));
}

TEST(SimObjectTest, ExpandedChildrenOfAQuickSetObjectAreLeftOutOnRequest) {
    SimObject root;
    root.Initialize();
    TypedObject::MakeUnder(&root, "CityPart", "block");
    TypedObject::MakeUnder(&root, "TestPoint", "probe");
    TypedObject::MakeUnder(&root, "Interface", "wall");

    CElement element;
    root.ToXml(&element, true);
    EXPECT_EQ(element.elementCount(), 3);  // not a quick-set object

    root.SetIsQuickSet(true);
    root.ToXml(&element, true);
    EXPECT_EQ(element.elementCount(), 1);
    EXPECT_TRUE(element.hasElement("Interface"));
    root.ToXml(&element, false);
    EXPECT_EQ(element.elementCount(), 3);
}

TEST(SimObjectTest, AttributesAndElementsAreWrittenInTheirFixedOrder) {
    SimObject root;
    root.Initialize();
    root.SetName("root");
    // Created in an order unlike the file's: elements sort by name in byte order.
    for (const char* type : {"beta", "Beta", "alpha", "Zeta"}) {
        TypedObject::MakeUnder(&root, type, std::string("n-") + type);
    }
    Document document;
    ASSERT_TRUE(root.ToXml(&document, false));
    std::string text;
    ASSERT_TRUE(document.writeToString(text));

    std::vector<size_t> elements;
    for (const char* tag : {"<Beta ", "<Zeta ", "<alpha ", "<beta "}) {
        elements.push_back(text.find(tag));
        ASSERT_NE(elements.back(), std::string::npos) << tag;
    }
    EXPECT_TRUE(std::is_sorted(elements.begin(), elements.end()));

    std::string rootLine = text.substr(text.find("<SimObject "));
    rootLine = rootLine.substr(0, rootLine.find('>'));
    std::vector<size_t> attributes;
    for (const char* name :
         {"A_SIMOBJID=", "A_OBJTYP=", "A_OBJTYPID=", "A_NAME=", "A_OBJNAMEID=", "A_QIKSET="}) {
        attributes.push_back(rootLine.find(name));
        ASSERT_NE(attributes.back(), std::string::npos) << name;
    }
    EXPECT_TRUE(std::is_sorted(attributes.begin(), attributes.end()));
    EXPECT_NE(rootLine.find("A_NAME=\"root\""), std::string::npos);
}

TEST(SimObjectTest, FromXmlReadsNamesButNotTheId) {
    CElement element("SimObject");
    element.setAttribute(A_SIMOBJID, 987654);
    element.setAttribute(A_OBJTYPID, 4);
    element.setAttribute(A_NAME, std::string("loaded"));
    element.setAttribute(A_OBJNAMEID, 7);
    element.setAttribute(A_QIKSET, true);
    element.setAttribute(A_CAPT, std::string("a caption"));

    SimObject plain;
    plain.Initialize();
    int id = plain.GetSimObjectID();
    ASSERT_TRUE(plain.FromXml(&element));
    EXPECT_EQ(plain.GetSimObjectID(), id);
    EXPECT_EQ(plain.GetName(), "loaded");
    EXPECT_TRUE(plain.TestTypeId(4));
    EXPECT_TRUE(plain.TestNameId(7));
    EXPECT_TRUE(plain.getQuickSet());
    EXPECT_TRUE(plain.GetLoadedFromXml());
    EXPECT_EQ(plain.GetSourceElement(), &element);
    EXPECT_FALSE(plain.HasCaption());  // read only into a caption that exists

    SimObject captioned;
    captioned.SetCaption("old");
    captioned.FromXml(&element);
    EXPECT_EQ(captioned.GetCaption(), "a caption");

    plain.Initialize();
    EXPECT_FALSE(plain.GetLoadedFromXml());
    EXPECT_EQ(plain.GetSourceElement(), nullptr);
    EXPECT_FALSE(plain.FromXml(nullptr));
}

TEST(SimObjectTest, PointersAndVectorsLoadFromSubElements) {
    CElement element("SimObject");
    AddSub(&element, "PickyObject", "first");
    AddSub(&element, "PickyObject", "broken");
    AddSub(&element, "PickyObject", "second");
    AddSub(&element, "TypedObject", "first");

    SimObject owner;
    owner.Initialize();
    PickyObject* byName = nullptr;
    ASSERT_TRUE(owner.LoadPointerByName(&byName, &element, "second"));
    ASSERT_NE(byName, nullptr);
    EXPECT_EQ(byName->GetParent(), &owner);
    EXPECT_TRUE(byName->GetLoadedFromXml());
    EXPECT_EQ(owner.GetChildCount(), 1);

    // Loading into an existing object keeps it and does not add it twice.
    PickyObject* again = byName;
    EXPECT_TRUE(owner.LoadPointerByName(&again, &element, "first"));
    EXPECT_EQ(again, byName);
    EXPECT_EQ(byName->GetName(), "first");
    EXPECT_EQ(owner.GetChildCount(), 1);

    PickyObject* failed = nullptr;
    EXPECT_FALSE(owner.LoadPointerByName(&failed, &element, "broken"));
    EXPECT_FALSE(owner.LoadPointerByName(&failed, &element, "absent"));
    EXPECT_EQ(failed, nullptr);
    EXPECT_EQ(owner.GetChildCount(), 1);

    TypedObject* byType = nullptr;
    EXPECT_TRUE(owner.LoadPointerByType(&byType, &element, "TypedObject"));
    EXPECT_TRUE(byType->TestType("TypedObject"));

    std::vector<PickyObject*> pickies;
    EXPECT_FALSE(owner.LoadVectorByType(&pickies, &element, "PickyObject"));
    ASSERT_EQ(pickies.size(), 2u);  // the broken one was made and deleted again
    EXPECT_EQ(pickies[0]->GetName(), "first");
    EXPECT_EQ(pickies[1]->GetName(), "second");
    EXPECT_EQ(owner.GetChildCount(), 4);

    std::vector<TypedObject*> named;
    EXPECT_TRUE(owner.LoadVectorByName(&named, &element, "first"));
    ASSERT_EQ(named.size(), 2u);
    EXPECT_TRUE(named[0]->TestType("PickyObject"));  // the type comes from the element
    EXPECT_EQ(owner.GetChildCount(), 6);
}

TEST(SimObjectTest, AttributeTemplatesSetHintsAndLeaveMissingValuesAlone) {
    CElement element("x");
    double value = 2.5;
    ASSERT_TRUE(
        SimObject::LoadAttributeToElement(&element, A_DBLVAL, value, true, true, true, false));
    EXPECT_TRUE(element.findAttributep(A_DBLVAL, false)->getText());

    double read = 0;
    EXPECT_TRUE(SimObject::LoadAttributeFromElement(&element, A_DBLVAL, read));
    EXPECT_DOUBLE_EQ(read, 2.5);
    int untouched = 42;
    EXPECT_FALSE(SimObject::LoadAttributeFromElement(&element, A_INTVAL, untouched));
    EXPECT_EQ(untouched, 42);
    EXPECT_EQ(element.attributeCount(), 1);
}

TEST(SimObjectTest, CheckEqComparesNamesTypesAndChildrenInOrder) {
    SimObject left;
    SimObject right;
    for (SimObject* root : {&left, &right}) {
        root->Initialize();
        root->SetName("root");
        TypedObject::MakeUnder(root, "Alpha", "a");
        TypedObject::MakeUnder(root, "Beta", "b");
    }
    EXPECT_TRUE(left.CheckEq(&right));
    EXPECT_FALSE(left.CheckEq(nullptr));

    LogCapture log;
    right.GetChild(1)->SetName("other");
    EXPECT_FALSE(left.CheckEq(&right));
    EXPECT_TRUE(log.Contains("child of root named b"));

    right.GetChild(1)->SetName("b");
    TypedObject::MakeUnder(&right, "Gamma", "c");
    EXPECT_FALSE(left.CheckEq(&right));
}

TEST(SimObjectTest, QuickSetFlagsPassDownTheTree) {
    SimObject root;
    root.Initialize();
    auto* child = new RebuildCounter();
    child->Initialize();
    root.AddChild(child);
    auto* grandchild = new RebuildCounter();
    grandchild->Initialize();
    child->AddChild(grandchild);

    // Every object starts in need of a rebuild.
    root.QuickSetToChildren(false);
    EXPECT_EQ(child->rebuilds, 1);
    EXPECT_EQ(grandchild->rebuilds, 1);
    EXPECT_FALSE(child->GetUpdateQuickSet());
    EXPECT_FALSE(grandchild->GetUpdateQuickSet());

    root.QuickSetToChildren(false);
    EXPECT_EQ(child->rebuilds, 1);

    child->SetAbovoQuickSet(true);
    root.QuickSetToChildren(false);
    EXPECT_EQ(child->rebuilds, 2);
    EXPECT_EQ(grandchild->rebuilds, 1);

    root.SetUpdateQuickSet(true, true);
    EXPECT_TRUE(grandchild->GetUpdateQuickSet());
    root.SetUpdateQuickSet(false, false);
    EXPECT_TRUE(child->GetUpdateQuickSet());
    EXPECT_TRUE(root.QuickSetFromChildren());
}

TEST(SimObjectTest, NamesCaptionsAndRenderIds) {
    SimObject object;
    EXPECT_EQ(object.GetName(), "unNamed");
    EXPECT_FALSE(object.SetName(static_cast<const char*>(nullptr)));
    object.SetAutoCaption(true);
    object.SetName("antenna");
    EXPECT_EQ(object.GetCaption(), "antenna");
    EXPECT_TRUE(object.TestName("antenna"));
    EXPECT_FALSE(object.TestName("Antenna"));

    object.Initialize();
    int renderId = object.GetRenderObjectID();
    EXPECT_TRUE(Renderable::RenderIdInUse(renderId));
    Renderable::SetSelected(&object);
    {
        SimObject copy(object);
        EXPECT_EQ(copy.GetSimObjectID(), -1);
        EXPECT_EQ(copy.GetRenderObjectID(), -1);
        EXPECT_EQ(copy.GetCaption(), "antenna");
    }
    object.Initialize();
    EXPECT_FALSE(Renderable::RenderIdInUse(renderId));
    EXPECT_EQ(Renderable::GetSelected(), &object);

    // The selected and tracked object is forgotten when it goes.
    auto* gone = new SimObject();
    Renderable::SetTracked(gone);
    Renderable::SetSelected(gone);
    delete gone;
    EXPECT_EQ(Renderable::GetTracked(), nullptr);
    EXPECT_EQ(Renderable::GetSelected(), nullptr);
}
