#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <map>
#include <string>
#include <vector>

#include "system/SystemToXML.h"

namespace {

AccessPointOption RichAccessPoint() {
    AccessPointOption option;
    option.brand = "A&B <Wireless>";
    option.name = "Quote \"double\" and 'single'";
    option.description = "first line\nsecond line\twith a tab";
    option.link = "http://example.com/?a=1&b=2";
    option.standards = "802.11a/b/g/n/ac";
    option.frequencyBand = {2.4, 5, 5.9};
    option.power = {{2.4, 20}, {5, 23.5}};
    option.gain = {{2.4, 3}, {5, 5}};
    option.bandwidth = {20, 40, 80, 160};
    option.antennaCount = 4;
    return option;
}

AntennaOption RichAntenna() {
    AntennaOption option;
    option.brand = "<ant> & co";
    option.name = "patch";
    option.description = "\"wide\"";
    option.link = "a<b>c";
    option.frequency = {2.45, 5.5};
    option.hBeamWidth = {{2.45, 65}, {5.5, 60}};
    option.vBeamWidth = {{2.45, 30}};
    option.gain = {{2.45, 8.5}, {5.5, 10}};
    return option;
}

void ExpectEqual(const AccessPointOption& a, const AccessPointOption& b) {
    EXPECT_EQ(a.brand, b.brand);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.description, b.description);
    EXPECT_EQ(a.link, b.link);
    EXPECT_EQ(a.standards, b.standards);
    EXPECT_EQ(a.frequencyBand, b.frequencyBand);
    EXPECT_EQ(a.power, b.power);
    EXPECT_EQ(a.gain, b.gain);
    EXPECT_EQ(a.bandwidth, b.bandwidth);
    EXPECT_EQ(a.antennaCount, b.antennaCount);
}

void ExpectEqual(const AntennaOption& a, const AntennaOption& b) {
    EXPECT_EQ(a.brand, b.brand);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.description, b.description);
    EXPECT_EQ(a.link, b.link);
    EXPECT_EQ(a.frequency, b.frequency);
    EXPECT_EQ(a.hBeamWidth, b.hBeamWidth);
    EXPECT_EQ(a.vBeamWidth, b.vBeamWidth);
    EXPECT_EQ(a.gain, b.gain);
}

}  // namespace

TEST(OptionXml, RowsSurviveTheirTextWithCharactersXmlEscapes) {
    AccessPointOption accessPoint = RichAccessPoint();
    std::string text;
    ASSERT_TRUE(ObjToString(&accessPoint, text));
    AccessPointOption readAccessPoint;
    ASSERT_TRUE(ObjFromString(&readAccessPoint, text));
    ExpectEqual(readAccessPoint, accessPoint);

    AntennaOption antenna = RichAntenna();
    ASSERT_TRUE(ObjToString(&antenna, text));
    AntennaOption readAntenna;
    ASSERT_TRUE(ObjFromString(&readAntenna, text));
    ExpectEqual(readAntenna, antenna);

    // Empty rows survive too.
    AccessPointOption empty;
    ASSERT_TRUE(ObjToString(&empty, text));
    AccessPointOption readEmpty;
    ASSERT_TRUE(ObjFromString(&readEmpty, text));
    ExpectEqual(readEmpty, empty);
}

TEST(OptionXml, RowsAreRootsWithListValueChildren) {
    AccessPointOption accessPoint = RichAccessPoint();
    accessPoint.gain.clear();
    std::string text;
    ASSERT_TRUE(ObjToString(&accessPoint, text));
    EXPECT_EQ(text.rfind("<AP brand=\"A&amp;B &lt;Wireless&gt;\" name=", 0), 0u) << text;

    tinyxml2::XMLDocument document;
    ASSERT_EQ(document.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
    const tinyxml2::XMLElement* root = document.RootElement();
    const char* attributes[] = {"brand", "name",      "description",
                                "link",  "standards", "antennaCount"};
    const tinyxml2::XMLAttribute* attribute = root->FirstAttribute();
    for (const char* name : attributes) {
        ASSERT_NE(attribute, nullptr);
        EXPECT_STREQ(attribute->Name(), name);
        attribute = attribute->Next();
    }
    EXPECT_EQ(attribute, nullptr);

    const tinyxml2::XMLElement* child = root->FirstChildElement();
    const char* children[] = {"frequencyBand", "bandwidth", "power"};
    for (const char* name : children) {
        ASSERT_NE(child, nullptr);
        EXPECT_STREQ(child->Name(), name);
        child = child->NextSiblingElement();
    }
    EXPECT_EQ(child, nullptr);  // an empty map writes nothing

    const tinyxml2::XMLElement* band = root->FirstChildElement("frequencyBand");
    const tinyxml2::XMLElement* value = band->FirstChildElement("listValue");
    EXPECT_EQ(value->DoubleAttribute("val"), 2.4);
    EXPECT_EQ(value->Attribute("key"), nullptr);
    const tinyxml2::XMLElement* power = root->FirstChildElement("power")->FirstChildElement();
    EXPECT_STREQ(power->Name(), "listValue");
    EXPECT_EQ(power->DoubleAttribute("key"), 2.4);
    EXPECT_EQ(power->DoubleAttribute("val"), 20);

    AntennaOption antenna = RichAntenna();
    ASSERT_TRUE(ObjToString(&antenna, text));
    EXPECT_EQ(text.rfind("<ANT brand=", 0), 0u) << text;
}

TEST(OptionXml, ReadingAcceptsAnyRootAndFailsCleanlyOnBadInput) {
    AntennaOption antenna = RichAntenna();
    std::string text;
    ASSERT_TRUE(ObjToString(&antenna, text));
    AccessPointOption fromAntenna;
    ASSERT_TRUE(ObjFromString(&fromAntenna, text));
    EXPECT_EQ(fromAntenna.brand, antenna.brand);
    EXPECT_EQ(fromAntenna.gain, antenna.gain);

    EXPECT_FALSE(ObjToString(static_cast<const AccessPointOption*>(nullptr), text));
    EXPECT_FALSE(ObjToString(static_cast<const AntennaOption*>(nullptr), text));
    EXPECT_FALSE(ObjFromString(static_cast<AccessPointOption*>(nullptr), text));
    EXPECT_FALSE(ObjFromString(static_cast<AntennaOption*>(nullptr), text));

    AccessPointOption option;
    EXPECT_FALSE(ObjFromString(&option, "not xml <"));
    EXPECT_FALSE(ObjFromString(&option, ""));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(ObjFromString(&option, "<!-- no root -->"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ObjFromXML() failed - no root element to load from\n");

    // Malformed numbers: the bad entries are left out and the read says so.
    EXPECT_FALSE(ObjFromString(&option,
                               "<AP antennaCount=\"many\" name=\"n\"><bandwidth>"
                               "<listValue val=\"x\"/><listValue val=\"40\"/></bandwidth>"
                               "<power><listValue val=\"1\"/><listValue key=\"5\" val=\"2\"/>"
                               "</power></AP>"));
    EXPECT_EQ(option.antennaCount, 0);
    EXPECT_EQ(option.name, "n");
    EXPECT_EQ(option.bandwidth, (std::vector<double>{40}));
    EXPECT_EQ(option.power, (std::map<double, double>{{5, 2}}));
}
