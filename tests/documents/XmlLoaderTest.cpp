#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "WorkingDirectory.h"
#include "documents/XmlLoader.h"
#include "support/TempDir.h"

namespace {

TEST(XmlLoaderTest, LoadersReadAtTheCursorOrAtANamedSubElement) {
    WorkingDirectory working;
    TempDir& dir = working.dir;
    std::string path = dir.File("view.xml");
    std::ofstream(path) << "<View A_NAME=\"main\" A_TOP=\"10\" A_LEFT=\"20\">"
                           "<Position A_X=\"1.5\" A_Y=\"-2\" A_Z=\"3\"/>"
                           "<Colour A_R=\"255\" A_G=\"128\"/>"
                           "<Size A_WIDTH=\"640\" A_HEIGHT=\"480\"/></View>";
    XmlLoader loader;
    ASSERT_TRUE(loader.loadFile(path));
    EXPECT_EQ(loader.getCurrent(), &loader);

    const char* name = nullptr;
    EXPECT_TRUE(loader.loadAttribute(A_NAME, &name));
    EXPECT_STREQ(name, "main");
    int top = 0, left = 0;
    EXPECT_TRUE(loader.loadTopLeft<int>(nullptr, &top, &left));
    EXPECT_EQ(top, 10);
    EXPECT_EQ(left, 20);

    double x = 0, y = 0, z = 0;
    EXPECT_TRUE(loader.loadXYZ("Position", &x, &y, &z));
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2.0);
    EXPECT_EQ(z, 3.0);
    EXPECT_EQ(loader.getCurrent(), &loader);

    float width = 0, height = 0;
    EXPECT_TRUE(loader.loadWidthHeight("Size", &width, &height));
    EXPECT_EQ(width, 640.0f);
    EXPECT_EQ(height, 480.0f);

    // A missing attribute or sub-element gives false and leaves the outputs alone.
    int r = 0, g = 0, b = -1;
    EXPECT_FALSE(loader.loadRGB("Colour", &r, &g, &b));
    EXPECT_EQ(r, 255);
    EXPECT_EQ(g, 128);
    EXPECT_EQ(b, -1);
    x = 9;
    EXPECT_FALSE(loader.loadXYZ("Nowhere", &x, &y, &z));
    EXPECT_EQ(x, 9.0);
    EXPECT_EQ(loader.getCurrent(), &loader);
    EXPECT_FALSE(loader.loadAttribute<int>(A_NAME, nullptr));

    EXPECT_FALSE(loader.gotoParent());
    EXPECT_FALSE(loader.gotoSubElement("Nowhere"));
    ASSERT_TRUE(loader.gotoSubElement("Position"));
    EXPECT_TRUE(loader.loadXYZ<double>(nullptr, &x, &y, &z));
    EXPECT_TRUE(loader.gotoParent());
    EXPECT_EQ(loader.getCurrent(), &loader);

    ASSERT_TRUE(loader.saveFile(dir.File("again.xml")));
    XmlLoader again;
    ASSERT_TRUE(again.loadFile(dir.File("again.xml")));
    EXPECT_TRUE(again.equalTo(&loader));
    EXPECT_FALSE(again.loadFile(dir.File("missing.xml")));
    EXPECT_EQ(again.getCurrent(), &again);
}

}  // namespace
