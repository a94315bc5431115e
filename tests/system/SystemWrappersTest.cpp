#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <string>

#include "support/LogCapture.h"
#include "system/AccessPoint_.h"
#include "system/Barrier_.h"
#include "system/Furniture_.h"
#include "system/SamplePoint_.h"
#include "system/System_.h"
#include "system/Vector_.h"

namespace {

// Releases a record that a System_ held.
void Release(e_System_* record) {
    record->held = false;
    DeleteSystem(&record);
}

e_System_* BuildSystem() {
    e_System_* record = NewSystemIndoor(nullptr);
    e_Barrier_* barrier = NewBarrier(record);
    barrier->height_lower = 0.5;
    barrier->height_upper = 2.5;
    barrier->thickness = 0.25;
    barrier->medium = 2;
    barrier->vectors = NewVectorLLH(8.5, 47.25, 4);
    e_AccessPoint_* accessPoint = NewAccessPoint(record, "a");
    accessPoint->channel = 6;
    accessPoint->power = 0.5;
    SetVecXYZ(&accessPoint->location, 1, 2, 3);
    e_ReceivedSignal_* signal = NewReceivedSignal(NewSamplePoint(record, "s"), "a");
    signal->receivedPower_dBW = -60;
    signal->receivedPower_dBm = -30;
    signal->receivedPathCount = 2;
    NewSamplePoint(record, "quiet");
    NewFurniture(record)->type = 3;
    return record;
}

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
    e_System_* record = BuildSystem();
    System_ system(record);
    std::string text;
    ASSERT_TRUE(system.ToXMLText(text));
    EXPECT_EQ(text,
              "<System_ xMin=\"0\" xMax=\"0\" yMin=\"0\" yMax=\"0\" height=\"3\" "
              "floorMaterial=\"8\" floorThickness=\"0.02\" ceilingMaterial=\"6\" "
              "ceilingThickness=\"0.02\" only2d=\"true\">\n"
              "    <Barrier_ height_lower=\"0.5\" height_upper=\"2.5\" thickness=\"0.25\" "
              "medium=\"2\">\n"
              "        <Vector_ v1=\"85000\" v2=\"472500\" v3=\"4\" coord=\"1\"/>\n"
              "    </Barrier_>\n"
              "    <AP_ channel=\"6\" power=\"0.5\" size=\"0.12\" gain=\"8\" radPattern=\"1\" "
              "gainBeamWidth=\"45\" gainBeamHeight=\"360\" rotateVertical=\"0\" "
              "rotateHorizontal=\"0\">\n"
              "        <Vector_ x=\"1\" y=\"2\" z=\"3\"/>\n"
              "    </AP_>\n"
              "    <SP_ size=\"1\" gain=\"1\" receivedPower_dBW=\"-60\" receivedPower_dBm=\"-30\" "
              "receivedPathLoss_dB=\"0\" expectedPower_dBm=\"0\" expectedPathLoss_dB=\"0\" "
              "receivedPathCount=\"2\" simElementID=\"-1\">\n"
              "        <Vector_ x=\"0\" y=\"0\" z=\"0\"/>\n"
              "    </SP_>\n"
              "    <SP_ size=\"1\" gain=\"1\" simElementID=\"-1\">\n"
              "        <Vector_ x=\"0\" y=\"0\" z=\"0\"/>\n"
              "    </SP_>\n"
              "    <Furniture_/>\n"
              "</System_>\n");

    e_System_* copyRecord = NewSystemUrban(nullptr);
    System_ copy(copyRecord);
    EXPECT_FALSE(copy.Equals(&system));
    ASSERT_TRUE(copy.FromXMLText(text));
    std::string again;
    ASSERT_TRUE(copy.ToXMLText(again));
    EXPECT_EQ(again, text);
    EXPECT_TRUE(copy.Equals(&system));
    EXPECT_DOUBLE_EQ(copyRecord->barriers->vectors->lat, 47.25);
    EXPECT_STREQ(copyRecord->samplePoints->signals->apName, "");
    EXPECT_EQ(copyRecord->samplePoints->next->signals, nullptr);
    EXPECT_EQ(copyRecord->furniture->type, 0);
    EXPECT_TRUE(copyRecord->reflect);  // not in this dialect

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

    // Walls and access points want their own element name; sample points and vectors
    // take any; furniture has no form.
    tinyxml2::XMLDocument document;
    document.Parse("<Wall height_lower=\"1\" channel=\"4\" size=\"9\" x=\"5\"/>");
    tinyxml2::XMLElement* wall = document.RootElement();
    e_Barrier_* barrier = NewBarrier(record);
    EXPECT_FALSE(Barrier_(barrier).FromXML(wall));
    EXPECT_TRUE(capture.Contains("Barrier_::FromXML() failed\n"));
    EXPECT_EQ(barrier->height_lower, 0);
    e_AccessPoint_* accessPoint = NewAccessPoint(record, "a");
    EXPECT_FALSE(AccessPoint_(accessPoint).FromXML(wall));
    EXPECT_EQ(accessPoint->channel, 1);
    EXPECT_FALSE(Barrier_(nullptr).FromXML(wall));
    e_SamplePoint_* samplePoint = NewSamplePoint(record, "s");
    EXPECT_TRUE(SamplePoint_(samplePoint).FromXML(wall));
    EXPECT_EQ(samplePoint->size, 9);
    e_Vector_ vector{};
    EXPECT_TRUE(Vector_(&vector).FromXML(wall));
    EXPECT_EQ(vector.x, 5);
    EXPECT_FALSE(Furniture_(NewFurniture(record)).FromXML(wall));
    EXPECT_FALSE(Vector_(&vector).Equals(&system));
    Release(record);
}
