#include <gtest/gtest.h>

#include <string>

#include "documents/XmlWrapper.h"

namespace {

TEST(XmlWrapperTest, WritingCursorPlacesChildrenAndSiblings) {
    XmlWrapper xml;
    ASSERT_TRUE(xml.start());
    EXPECT_TRUE(xml.nextElement("root"));
    EXPECT_TRUE(xml.addAttribute("A_NAME", "r"));
    EXPECT_TRUE(xml.startSubElements());
    EXPECT_TRUE(xml.nextElement("first"));
    EXPECT_TRUE(xml.nextElement("second"));
    EXPECT_TRUE(xml.addComment("note"));
    EXPECT_TRUE(xml.startSubElements());
    // Nothing was placed below the comment, so the cursor stays on it.
    EXPECT_TRUE(xml.finishSubElements());
    EXPECT_TRUE(xml.finishSubElements());
    EXPECT_FALSE(xml.finishSubElements());
    EXPECT_FALSE(xml.nextElement(nullptr));
    EXPECT_FALSE(xml.nextElement(""));
    EXPECT_FALSE(xml.nextElement("2nd"));
    EXPECT_FALSE(xml.nextElement("a b"));
    EXPECT_FALSE(xml.addComment("ends --> early"));

    std::string text;
    ASSERT_TRUE(xml.writeToString(text));
    EXPECT_EQ(text,
              "<?xml version=\"1.0\" ?>\n<root A_NAME=\"r\">\n\t<first />\n\t<second />\n"
              "\t<!--note-->\n</root>\n");

    // start forgets everything before it.
    ASSERT_TRUE(xml.start());
    EXPECT_FALSE(xml.addAttribute("A_X", "1"));
    EXPECT_TRUE(xml.nextElement("_x:y-1.z"));
    text.clear();
    xml.writeToString(text);
    EXPECT_EQ(text, "<?xml version=\"1.0\" ?>\n<_x:y-1.z />\n");
}

TEST(XmlWrapperTest, ReadingWalksElementsAndCommentsOnly) {
    XmlWrapper xml;
    char* end = nullptr;
    const char* text =
        "<?xml version=\"1.0\"?><root A_X=\"1\" A_Y=\"2\">words<a/><!--c--><b><d/></b></root>";
    ASSERT_TRUE(xml.readCharArray(text, &end));
    ASSERT_NE(end, nullptr);
    EXPECT_TRUE(xml.hasCurrent());
    EXPECT_STREQ(xml.getElementValue(), "root");
    EXPECT_TRUE(xml.checkAttribute("A_X"));
    EXPECT_FALSE(xml.checkAttribute("A_Y"));
    EXPECT_STREQ(xml.getAttributeValue(), "1");
    EXPECT_TRUE(xml.nextAttribute());
    EXPECT_STREQ(xml.getAttributeName(), "A_Y");
    EXPECT_FALSE(xml.nextAttribute());
    EXPECT_FALSE(xml.attributeExists());
    EXPECT_STREQ(xml.getAttributeName(), "");

    ASSERT_TRUE(xml.hasChildren());
    ASSERT_TRUE(xml.startChildren());
    EXPECT_STREQ(xml.getElementValue(), "a");
    EXPECT_FALSE(xml.hasChildren());
    EXPECT_FALSE(xml.startChildren());
    ASSERT_TRUE(xml.nextElement());
    EXPECT_TRUE(xml.isComment());
    EXPECT_STREQ(xml.getElementValue(), "c");
    ASSERT_TRUE(xml.nextElement());
    EXPECT_STREQ(xml.getElementValue(), "b");
    EXPECT_FALSE(xml.currentHasNextSibling());
    EXPECT_FALSE(xml.nextElement());
    EXPECT_STREQ(xml.getElementValue(), "b");
    ASSERT_TRUE(xml.startChildren());
    EXPECT_STREQ(xml.getElementValue(), "d");
    EXPECT_TRUE(xml.finishChildren());
    EXPECT_TRUE(xml.finishChildren());
    EXPECT_STREQ(xml.getElementValue(), "root");
    EXPECT_FALSE(xml.finishChildren());

    xml.clear();
    EXPECT_FALSE(xml.hasCurrent());
    EXPECT_STREQ(xml.getElementValue(), "");
    EXPECT_FALSE(xml.readCharArray("<!-- only a comment -->", nullptr));
}

}  // namespace
