#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "system/SystemToXML.h"

// Round trips of catalogue rows with characters that XML escapes are in the message tests,
// where rows travel as these texts.

// A row is a root element with its texts and count as attributes and one child per
// non-empty list, whose entries are "listValue" elements ("key" for maps).
TEST(OptionXml, RowsAreRootsWithListValueChildren) {
    AccessPointOption accessPoint{"A&B <W>", "n", "d", "l", "ac", {2.5}, {{2.5, 20}}, {}, {40}, 4};
    std::string text;
    ASSERT_TRUE(ObjToString(&accessPoint, text));
    EXPECT_EQ(text,
              "<AP brand=\"A&amp;B &lt;W&gt;\" name=\"n\" description=\"d\" link=\"l\" "
              "standards=\"ac\" antennaCount=\"4\">\n"
              "    <frequencyBand>\n        <listValue val=\"2.5\"/>\n    </frequencyBand>\n"
              "    <bandwidth>\n        <listValue val=\"40\"/>\n    </bandwidth>\n"
              "    <power>\n        <listValue key=\"2.5\" val=\"20\"/>\n    </power>\n"
              "</AP>\n");
    AntennaOption antenna;
    ASSERT_TRUE(ObjToString(&antenna, text));
    EXPECT_EQ(text, "<ANT brand=\"\" name=\"\" description=\"\" link=\"\"/>\n");
}

TEST(OptionXml, ReadingFailsCleanlyOnBadInput) {
    AccessPointOption option;
    EXPECT_FALSE(ObjFromString(&option, "not xml <"));
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
