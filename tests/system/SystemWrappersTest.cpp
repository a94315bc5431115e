#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <string>

#include "support/LogCapture.h"
#include "system/Barrier_.h"
#include "system/Furniture_.h"
#include "system/SamplePoint_.h"
#include "system/System_.h"

namespace {

// Releases a record that a System_ held.
void Release(e_System_* record) {
    record->held = false;
    DeleteSystem(&record);
}

// A system in the wrappers' dialect: geographic corners through the factor 10000, other
// vectors as plain x, y and z, signals without their access point's name, furniture empty.
const std::string dialectText =
    "<System_ xMin=\"-1\" xMax=\"20\" yMin=\"0\" yMax=\"10\" height=\"2.5\" floorMaterial=\"4\" "
    "floorThickness=\"0.25\" ceilingMaterial=\"5\" ceilingThickness=\"0.125\" only2d=\"false\">\n"
    "    <Barrier_ height_lower=\"0.5\" height_upper=\"2.5\" thickness=\"0.25\" medium=\"2\">\n"
    "        <Vector_ v1=\"85000\" v2=\"472500\" v3=\"4\" coord=\"1\"/>\n"
    "    </Barrier_>\n"
    "    <AP_ channel=\"6\" power=\"0.5\" size=\"0.125\" gain=\"7\" radPattern=\"2\" "
    "gainBeamWidth=\"40\" gainBeamHeight=\"350\" rotateVertical=\"1\" rotateHorizontal=\"2\">\n"
    "        <Vector_ x=\"1\" y=\"2\" z=\"3\"/>\n"
    "    </AP_>\n"
    "    <SP_ size=\"2\" gain=\"3\" receivedPower_dBW=\"-60\" receivedPower_dBm=\"-30\" "
    "receivedPathLoss_dB=\"1\" expectedPower_dBm=\"2\" expectedPathLoss_dB=\"3\" "
    "receivedPathCount=\"2\" simElementID=\"5\">\n"
    "        <Vector_ x=\"0\" y=\"0\" z=\"0\"/>\n"
    "    </SP_>\n"
    "    <SP_ size=\"1\" gain=\"1\" simElementID=\"-1\">\n"
    "        <Vector_ x=\"0\" y=\"0\" z=\"0\"/>\n"
    "    </SP_>\n"
    "    <Furniture_/>\n"
    "</System_>\n";

}  // namespace

// The wrapper sets `held`, so that a message releasing the record leaves it alone, and
// neither frees the record nor clears the flag when it goes.
TEST(SystemWrappers, SystemWrapperHoldsTheRecordWithoutOwningIt) {
    e_System_* record = NewSystemIndoor(nullptr);
    auto* wrapper = new System_(record);
    EXPECT_TRUE(record->held);
    e_System_* carried = record;
    DeleteSystem(&carried);
    EXPECT_EQ(carried, record);
    delete wrapper;
    EXPECT_TRUE(record->held);
    Release(record);

    std::string text;
    EXPECT_FALSE(System_(nullptr).ToXMLText(text));
}

TEST(SystemWrappers, SystemTextInTheOlderDialectRoundTrips) {
    e_System_* record = NewSystemUrban(nullptr);
    System_ system(record);
    std::string text = dialectText;
    ASSERT_TRUE(system.FromXMLText(text));
    EXPECT_DOUBLE_EQ(record->barriers->vectors->lat, 47.25);
    EXPECT_STREQ(record->samplePoints->signals->apName, "");
    EXPECT_EQ(record->samplePoints->next->signals, nullptr);
    EXPECT_TRUE(record->reflect);  // not in this dialect
    record->furniture->type = 3;   // nor is any furniture field
    ASSERT_TRUE(system.ToXMLText(text));
    EXPECT_EQ(text, dialectText);

    // Wrappers are equal when their records write the same text.
    e_System_* copyRecord = NewSystemIndoor(nullptr);
    System_ copy(copyRecord);
    EXPECT_FALSE(copy.Equals(&system));
    ASSERT_TRUE(copy.FromXMLText(text));
    EXPECT_TRUE(copy.Equals(&system));
    copyRecord->barriers->thickness = 0.3;
    EXPECT_FALSE(copy.Equals(&system));
    Release(record);
    Release(copyRecord);
}

TEST(SystemWrappers, ReadingChecksElementNamesAndFailsCleanly) {
    e_System_* record = NewSystemIndoor(nullptr);
    System_ system(record);
    LogCapture capture;
    for (std::string text : {"<Network height=\"9\"/>", "<System_", "<!-- none -->"}) {
        EXPECT_FALSE(system.FromXMLText(text)) << text;
    }
    EXPECT_TRUE(capture.Contains("System_::FromXML() failed\n"));
    EXPECT_EQ(record->height, 3);

    // Walls want their own element name; sample points take any; furniture has no form.
    tinyxml2::XMLDocument document;
    document.Parse("<Wall height_lower=\"1\" size=\"9\"/>");
    tinyxml2::XMLElement* wall = document.RootElement();
    e_Barrier_* barrier = NewBarrier(record);
    EXPECT_FALSE(Barrier_(barrier).FromXML(wall));
    EXPECT_TRUE(capture.Contains("Barrier_::FromXML() failed\n"));
    EXPECT_EQ(barrier->height_lower, 0);
    EXPECT_FALSE(Barrier_(nullptr).FromXML(wall));
    e_SamplePoint_* samplePoint = NewSamplePoint(record, "s");
    EXPECT_TRUE(SamplePoint_(samplePoint).FromXML(wall));
    EXPECT_EQ(samplePoint->size, 9);
    EXPECT_FALSE(Furniture_(NewFurniture(record)).FromXML(wall));
    Release(record);
}
