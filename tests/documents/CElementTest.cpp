#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "documents/CElement.h"

namespace {

std::vector<std::string> SubNames(const CElement& element) {
    std::vector<std::string> names;
    for (const auto& entry : element.elements()) names.push_back(entry.second->getName());
    return names;
}

CElement* AddNamed(CElement& parent, const std::string& name, int id) {
    auto* element = new CElement(name);
    element->setAttribute(A_SIMOBJID, id);
    parent.addElement(element);
    return element;
}

TEST(CElementTest, AttributesKeepIdOrderWhateverTheSetOrder) {
    CElement element("Parameter");
    element.setAttribute(A_NAME, "gain");
    element.setAttribute(A_SIMOBJID, 7);
    element.setAttribute(A_CAPT, std::string("Gain"));
    ASSERT_EQ(element.attributeCount(), 3);
    EXPECT_EQ(element.getAttributeFromSeq(0)->getNameId(), A_SIMOBJID);
    EXPECT_EQ(element.getAttributeFromSeq(1)->getNameId(), A_NAME);
    EXPECT_EQ(element.getAttributeFromSeq(2)->getNameId(), A_CAPT);
    EXPECT_EQ(element.getAttributeFromSeq(3), nullptr);
    EXPECT_EQ(element.getAttributeFromSeq(-1), nullptr);

    element.setAttribute(A_SIMOBJID, 8);
    EXPECT_EQ(element.attributeCount(), 3);
    EXPECT_STREQ(element.getAttributeValue(A_SIMOBJID), "8");
    EXPECT_EQ(element.getAttributeValue(A_X), nullptr);

    element.setAttribute(A_FILL, true);
    EXPECT_STREQ(element.getAttributeValue(A_FILL), "true");
    int filled = -1;
    EXPECT_TRUE(element.getAttributeValue(A_FILL, filled));
    EXPECT_EQ(filled, 1);
    double missing = 2.5;
    EXPECT_FALSE(element.getAttributeValue(A_X, missing));
    EXPECT_EQ(missing, 2.5);

    EXPECT_TRUE(element.testAttribute(A_NAME, "gain"));
    EXPECT_FALSE(element.testAttribute(A_X, 0));
    EXPECT_EQ(element.findAttributep(A_X, false), nullptr);
    EXPECT_EQ(element.attributeCount(), 4);
    Attribute* made = element.findAttributep(A_X, true);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getNameId(), A_X);
    EXPECT_EQ(element.findAttributep(A_X, true), made);
    EXPECT_EQ(element.attributeCount(), 5);
    EXPECT_FALSE(element.addAttribute(nullptr));
}

TEST(CElementTest, SubElementsOrderByNameThenInsertion) {
    CElement root("root");
    CElement* firstB = AddNamed(root, "b", 1);
    CElement* a = AddNamed(root, "a", 2);
    CElement* secondB = AddNamed(root, "b", 3);
    AddNamed(root, "B", 4);
    EXPECT_EQ(SubNames(root), (std::vector<std::string>{"B", "a", "b", "b"}));
    EXPECT_EQ(root.getElementFromSeq(1), a);
    EXPECT_EQ(root.getElementFromSeq(2), firstB);
    EXPECT_EQ(root.getElementFromSeq(3), secondB);
    EXPECT_EQ(root.getElementFromSeq(4), nullptr);
    EXPECT_EQ(root.findElementp("b"), firstB);

    // A renamed element moves to its new place, behind others of that name.
    firstB->setName("a");
    EXPECT_EQ(SubNames(root), (std::vector<std::string>{"B", "a", "a", "b"}));
    EXPECT_EQ(root.getElementFromSeq(2), firstB);
    EXPECT_TRUE(firstB->testName("a"));

    EXPECT_FALSE(root.addElement(nullptr));
    EXPECT_FALSE(root.addElement(&root));
    EXPECT_FALSE(root.addElement(a));
    EXPECT_EQ(root.elementCount(), 4);

    // findElementp makes the element only when asked to.
    EXPECT_EQ(root.findElementp("x", false), nullptr);
    CElement* made = root.findElementp("x", true);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getParent(), &root);
    EXPECT_EQ(root.findElementp("x", true), made);
    EXPECT_EQ(root.elementCount(), 5);
}

TEST(CElementTest, FindSubElementWithAttributeCountsMatchesInOrder) {
    CElement root("root");
    AddNamed(root, "Parameter", 5);
    CElement* other = AddNamed(root, "Coordinates", 6);
    CElement* second = AddNamed(root, "Parameter", 5);
    CElement* first = AddNamed(root, "Direction", 5);

    EXPECT_EQ(root.findSubElementWithAttribute<int>(A_SIMOBJID, 5, 0), first);
    EXPECT_EQ(root.findSubElementWithAttribute<int>(A_SIMOBJID, 5, 1),
              root.findElementp("Parameter"));
    EXPECT_EQ(root.findSubElementWithAttribute<int>(A_SIMOBJID, 5, 2), second);
    EXPECT_EQ(root.findSubElementWithAttribute<int>(A_SIMOBJID, 5, 3), nullptr);
    char idText[] = "6";
    EXPECT_EQ(root.findSubElementWithAttribute<char*>(A_SIMOBJID, idText, 0), other);
    EXPECT_EQ(root.findSubElementWithAttribute<int>(A_NAME, 5, 0), nullptr);
}

TEST(CElementTest, RemovalAndDeletionKeepTheTreeSound) {
    CElement root("root");
    CElement* keep = AddNamed(root, "a", 1);
    CElement* drop = AddNamed(root, "b", 2);
    AddNamed(*drop, "c", 3);

    CElement stranger("b");
    EXPECT_FALSE(root.removeElement(&stranger));
    EXPECT_FALSE(root.removeElement(nullptr));
    EXPECT_TRUE(root.removeElement(drop));
    EXPECT_EQ(SubNames(root), std::vector<std::string>{"a"});

    // Deleting a sub-element directly takes it out of its parent.
    delete keep;
    EXPECT_EQ(root.elementCount(), 0);

    AddNamed(root, "d", 4);
    root.setAttribute(A_NAME, "n");
    root.Empty();
    EXPECT_EQ(root.elementCount(), 0);
    EXPECT_EQ(root.attributeCount(), 0);
    EXPECT_EQ(root.getName(), "root");
}

TEST(CElementTest, AttributeHintsAndOptionsThroughTheElement) {
    CElement element("Parameter");
    EXPECT_FALSE(element.setAttributeDisplayEditTextDropBox(A_VAL, true, true, false, true));
    EXPECT_FALSE(element.addAttributeOption(A_VAL, "x"));
    EXPECT_FALSE(element.clearAttributeOptions(A_VAL));
    EXPECT_FALSE(element.setAttributeDisplayFilenameEdit(A_STRVAL));

    element.setAttribute(A_VAL, "PV_GLASS");
    element.setAttribute(A_STRVAL, "/tmp/a.pat");
    element.setAttribute(A_MULT, "PM_NONE");
    EXPECT_TRUE(element.setAttributeDisplayEditTextDropBox(A_VAL, true, true, false, true));
    EXPECT_TRUE(element.addAttributeOption(A_VAL, "PV_GLASS"));
    EXPECT_TRUE(element.addAttributeOption(A_VAL, "PV_BRICK"));
    Attribute* value = element.findAttributep(A_VAL);
    EXPECT_TRUE(value->getDropBox() && value->getEdit());
    EXPECT_EQ(value->GetOptions()->size(), 2u);
    EXPECT_TRUE(element.clearAttributeOptions(A_VAL));
    EXPECT_FALSE(value->HasOptions());

    EXPECT_TRUE(element.setAttributeDisplayDirectoryEdit(A_MULT));
    EXPECT_TRUE(element.findAttributep(A_MULT)->getDirectoryChooser());
}

TEST(CElementTest, DuplicateIsDeepAndEqualToComparesEverything) {
    CElement source("OpticElement");
    source.setAttribute(A_SIMOBJID, 3);
    source.setAttribute(A_NAME, "room");
    CElement* child = AddNamed(source, "Parameter", 4);
    child->setAttribute(A_DBLVAL, 1.5);
    AddNamed(*child, "Leaf", 5);

    CElement copy("old");
    AddNamed(copy, "stale", 9);
    EXPECT_FALSE(copy.duplicate(nullptr));
    ASSERT_TRUE(copy.duplicate(&source));
    EXPECT_TRUE(copy.equalTo(&source));
    EXPECT_TRUE(source.equalTo(&copy));
    CElement* copiedChild = copy.findElementp("Parameter");
    ASSERT_NE(copiedChild, nullptr);
    EXPECT_NE(copiedChild, child);
    EXPECT_EQ(copiedChild->getParent(), &copy);
    EXPECT_EQ(copiedChild->findElementp("Leaf")->getParent(), copiedChild);

    copiedChild->setAttribute(A_DBLVAL, 2.5);
    EXPECT_FALSE(copy.equalTo(&source));
    EXPECT_EQ(child->findAttributep(A_DBLVAL)->getDouble(), 1.5);
    copiedChild->setAttribute(A_DBLVAL, "1.500000");
    EXPECT_TRUE(copy.equalTo(&source));

    AddNamed(copy, "Extra", 6);
    EXPECT_FALSE(copy.equalTo(&source));
    EXPECT_FALSE(copy.equalTo(nullptr));

    // An element can take the content of one of its own descendants.
    copy.duplicate(copy.findElementp("Parameter"));
    EXPECT_EQ(copy.getName(), "Parameter");
    EXPECT_TRUE(copy.equalTo(child));
}

}  // namespace
