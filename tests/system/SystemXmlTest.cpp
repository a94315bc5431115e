#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "support/LogCapture.h"
#include "support/TempDir.h"
#include "system/SystemToXML.h"

namespace {

// Owns a system, also one left held.
using SystemPtr = std::unique_ptr<e_System_, decltype([](e_System_* system) {
                                      system->held = false;
                                      DeleteSystem(&system);
                                  })>;

// A system with every kind of record, each field that is read back away from the reader's
// default, in the writer's own form: numbers exact in binary, geographic corners through the
// factor 10000, escaped names, a wall without corners, a sample point without a name.
// Fields that are written but not read back (frequency_GHz, furniture forward and up)
// hold their defaults.
const std::string richText =
    "<System_ isIndoorOnly=\"false\" xMin=\"-10.5\" xMax=\"20.25\" yMin=\"-3\" yMax=\"44.125\" "
    "height=\"12.5\" ceilingMaterial=\"3\" ceilingThickness=\"0.125\" floorThickness=\"0.5\" "
    "lonMin=\"8.5\" lonMax=\"8.5625\" latMin=\"47.375\" latMax=\"47.4375\" "
    "osmContent=\"&lt;osm version=&quot;0.6&quot;&gt;\n  &lt;node "
    "id=&apos;1&apos;/&gt;\n&lt;/osm&gt;\" "
    "loadBuildings=\"true\" loadRoads=\"true\" loadSignals=\"true\" loadTrees=\"true\" "
    "loadTerrain=\"true\" floorMaterial=\"9\" only2d=\"false\" pathLoss_model=\"4\" "
    "pathLoss_Exp=\"2.5\" rayGap=\"0.25\" traceLimit=\"7\" reflect=\"true\" transmit=\"false\" "
    "failPowerValue=\"-95.5\">\n"
    "    <Building_ height=\"21\" levelCount=\"7\" wallThickness=\"0.375\" wallMedium=\"2\" "
    "roofThickness=\"0.5\" roofMedium=\"3\" floorThickness=\"0.625\" floorMedium=\"4\" "
    "thinBarrier=\"false\" reflect=\"false\" transmit=\"true\">\n"
    "        <Vector_ v1=\"85625\" v2=\"473750\" v3=\"0\" coord=\"1\"/>\n"
    "        <Vector_ v1=\"85000\" v2=\"473125\" v3=\"0\" coord=\"1\"/>\n"
    "        <Vector_ v1=\"-1250\" v2=\"515000\" v3=\"11\" coord=\"1\"/>\n"
    "    </Building_>\n"
    "    <Barrier_ height_lower=\"0.5\" height_upper=\"2.75\" thickness=\"0.25\" medium=\"3\" "
    "vertical=\"false\" thinBarrier=\"false\" reflect=\"false\" transmit=\"true\">\n"
    "        <Vector_ v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
    "        <Vector_ v1=\"5.5\" v2=\"-2.25\" v3=\"0.001\" coord=\"0\"/>\n"
    "    </Barrier_>\n"
    "    <Barrier_ height_lower=\"0\" height_upper=\"0\" thickness=\"0\" medium=\"0\" "
    "vertical=\"true\" thinBarrier=\"true\" reflect=\"true\" transmit=\"false\">\n"
    "        <Vector_ v1=\"85000\" v2=\"473750\" v3=\"2\" coord=\"1\"/>\n"
    "    </Barrier_>\n"
    "    <Barrier_ height_lower=\"0\" height_upper=\"0\" thickness=\"0\" medium=\"0\" "
    "vertical=\"true\" thinBarrier=\"true\" reflect=\"true\" transmit=\"false\"/>\n"
    "    <AP_ name=\"AP &lt;main&gt; &amp; &quot;lobby&quot;\" channel=\"40\" frequency_GHz=\"-1\" "
    "power=\"0.25\" size=\"0.375\" gain=\"5\" radPattern=\"3\" gainBeamWidth=\"60\" "
    "gainBeamHeight=\"90\" rotateVertical=\"-15\" rotateHorizontal=\"90\">\n"
    "        <location v1=\"1\" v2=\"2\" v3=\"2.5\" coord=\"0\"/>\n"
    "    </AP_>\n"
    "    <SP_ name=\"desk &apos;one&apos;\" size=\"2\" gain=\"3\" simElementID=\"12\">\n"
    "        <location v1=\"4\" v2=\"6\" v3=\"1\" coord=\"0\"/>\n"
    "        <signal apName=\"AP &lt;main&gt; &amp; &quot;lobby&quot;\" "
    "receivedPower_dBW=\"-77.25\" "
    "receivedPower_dBm=\"-47.25\" receivedPathLoss_dB=\"61.5\" expectedPower_dBm=\"-50\" "
    "expectedPathLoss_dB=\"60\" receivedPathCount=\"9\"/>\n"
    "        <signal apName=\"roof\" receivedPower_dBW=\"-101\" receivedPower_dBm=\"0\" "
    "receivedPathLoss_dB=\"0\" expectedPower_dBm=\"0\" expectedPathLoss_dB=\"0\" "
    "receivedPathCount=\"0\"/>\n"
    "    </SP_>\n"
    "    <SP_ size=\"0.5\" gain=\"1\" simElementID=\"-1\">\n"
    "        <location v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
    "    </SP_>\n"
    "    <Furniture_ type=\"2\" length=\"1.5\" width=\"0.75\" height=\"0.75\">\n"
    "        <location v1=\"2\" v2=\"3\" v3=\"0\" coord=\"0\"/>\n"
    "        <forward v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
    "        <up v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
    "    </Furniture_>\n"
    "</System_>\n";

SystemPtr ReadSystem(const std::string& text, bool* ok = nullptr) {
    SystemPtr system(NewSystemIndoor(nullptr));
    tinyxml2::XMLDocument document(true, tinyxml2::COLLAPSE_WHITESPACE);
    document.Parse(text.c_str());
    bool read = ObjFromXML(system.get(), system.get(), document.RootElement());
    if (ok != nullptr) *ok = read;
    return system;
}

template <typename T>
int Count(const T* list) {
    int count = 0;
    for (; list != nullptr; list = list->next) ++count;
    return count;
}

}  // namespace

// Every record a maker returns carries the defaults of its table; the text shows them in
// their order, numbers at full precision, geographic corners through the factor 10000.
TEST(SystemXml, DefaultRecordsWriteEveryDefaultInOrder) {
    SystemPtr system(NewSystemIndoor(nullptr));
    e_System_* s = system.get();
    s->osmFile = CopyString("f.osm");
    s->osmContent = CopyString("c");
    NewBuilding(s)->vectors = NewVectorXYZ(1, 2, 3);
    NewBarrier(s)->vectors = NewVectorLLH(8.5, 47.25, 400);
    NewAccessPoint(s, "a");
    NewReceivedSignal(NewSamplePoint(s, "s"), "a");
    NewFurniture(s);
    std::string text;
    ASSERT_TRUE(SystemToString(s, text));
    EXPECT_EQ(
        text,
        "<System_ isIndoorOnly=\"true\" xMin=\"0\" xMax=\"0\" yMin=\"0\" yMax=\"0\" "
        "height=\"3\" ceilingMaterial=\"6\" ceilingThickness=\"0.02\" "
        "floorThickness=\"0.02\" lonMin=\"0\" lonMax=\"0\" latMin=\"0\" latMax=\"0\" "
        "osmFile=\"f.osm\" osmContent=\"c\" loadBuildings=\"false\" loadRoads=\"false\" "
        "loadSignals=\"false\" loadTrees=\"false\" loadTerrain=\"false\" "
        "floorMaterial=\"8\" only2d=\"true\" pathLoss_model=\"2\" pathLoss_Exp=\"2\" "
        "rayGap=\"1\" traceLimit=\"5\" reflect=\"false\" transmit=\"true\" "
        "failPowerValue=\"-100\">\n"
        "    <Building_ height=\"0\" levelCount=\"1\" wallThickness=\"0.29999999999999999\" "
        "wallMedium=\"1\" "
        "roofThickness=\"0.29999999999999999\" roofMedium=\"1\" "
        "floorThickness=\"0.29999999999999999\" floorMedium=\"1\" thinBarrier=\"true\" "
        "reflect=\"false\" transmit=\"true\">\n"
        "        <Vector_ v1=\"1\" v2=\"2\" v3=\"3\" coord=\"0\"/>\n"
        "    </Building_>\n"
        "    <Barrier_ height_lower=\"0\" height_upper=\"0\" thickness=\"0\" medium=\"0\" "
        "vertical=\"true\" thinBarrier=\"true\" reflect=\"false\" transmit=\"true\">\n"
        "        <Vector_ v1=\"85000\" v2=\"472500\" v3=\"400\" coord=\"1\"/>\n"
        "    </Barrier_>\n"
        "    <AP_ name=\"a\" channel=\"1\" frequency_GHz=\"-1\" power=\"0.10000000000000001\" "
        "size=\"0.12\" gain=\"8\" radPattern=\"1\" gainBeamWidth=\"45\" "
        "gainBeamHeight=\"360\" rotateVertical=\"0\" rotateHorizontal=\"0\">\n"
        "        <location v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "    </AP_>\n"
        "    <SP_ name=\"s\" size=\"1\" gain=\"1\" simElementID=\"-1\">\n"
        "        <location v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "        <signal apName=\"a\" receivedPower_dBW=\"0\" receivedPower_dBm=\"0\" "
        "receivedPathLoss_dB=\"0\" expectedPower_dBm=\"0\" expectedPathLoss_dB=\"0\" "
        "receivedPathCount=\"0\"/>\n"
        "    </SP_>\n"
        "    <Furniture_ type=\"0\" length=\"0\" width=\"0\" height=\"0\">\n"
        "        <location v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "        <forward v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "        <up v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "    </Furniture_>\n"
        "</System_>\n");
    EXPECT_FALSE(s->diffract || s->barriers->diffract || s->buildings->diffract || s->held);

    // An urban system differs in its interactions, which its records copy; without content
    // or strings a system is attributes only. A building alone has its own interactions.
    SystemPtr urban(NewSystemUrban(s));
    EXPECT_EQ(s->barriers->next, nullptr);
    ASSERT_TRUE(SystemToString(urban.get(), text));
    EXPECT_TRUE(text.starts_with("<System_ isIndoorOnly=\"false\" xMin=\"0\" "));
    EXPECT_TRUE(text.ends_with(" reflect=\"true\" transmit=\"false\" failPowerValue=\"-100\"/>\n"));
    EXPECT_EQ(text.find("osm"), std::string::npos);
    e_Barrier_* wall = NewBarrier(urban.get());
    EXPECT_TRUE(urban->diffract && wall->reflect && !wall->transmit && wall->diffract);
    e_Building_* building = NewBuilding(nullptr);
    EXPECT_TRUE(building->reflect && !building->transmit && building->diffract);
    DeleteList(building);
}

TEST(SystemXml, RichSystemSurvivesTextAndFileUnchanged) {
    bool ok = false;
    SystemPtr fromText = ReadSystem(richText, &ok);
    ASSERT_TRUE(ok);
    std::string written;
    ASSERT_TRUE(SystemToString(fromText.get(), written));
    EXPECT_EQ(written, richText);

    TempDir directory;
    std::string file = directory.File("system.xml");
    ASSERT_TRUE(SystemToFile(fromText.get(), file.c_str()));
    EXPECT_EQ(ReadFile(file), richText);
    EXPECT_TRUE(FilehasSystem(file.c_str()));
    SystemPtr fromFile(NewSystemIndoor(nullptr));
    ASSERT_TRUE(SystemFromFile(fromFile.get(), file.c_str()));
    ASSERT_TRUE(SystemToString(fromFile.get(), written));
    EXPECT_EQ(written, richText);

    // What the records hold.
    e_System_* read = fromFile.get();
    EXPECT_STREQ(read->osmContent, "<osm version=\"0.6\">\n  <node id='1'/>\n</osm>");
    EXPECT_STREQ(read->accessPoints->name, "AP <main> & \"lobby\"");
    e_Vector_* corner = read->buildings->vectors;
    EXPECT_EQ(corner->coordSystem, 1);
    EXPECT_EQ(corner->lon, 8.5625);
    EXPECT_EQ(corner->lat, 47.375);
    EXPECT_EQ(corner->next->next->lon, -0.125);
    EXPECT_EQ(corner->x, 0);
    EXPECT_EQ(read->barriers->vectors->next->z, 1e-3);
    EXPECT_EQ(read->barriers->next->next->vectors, nullptr);
}

TEST(SystemXml, ListsAreReadSiblingBySiblingInFileOrder) {
    const std::string text =
        "<System_ reflect=\"true\">"
        "<Barrier_ medium=\"1\"><Vector_ v1=\"1\" v2=\"0\" v3=\"0\" coord=\"0\"/>"
        "<Wall/><Vector_ v1=\"2\" v2=\"0\" v3=\"0\" coord=\"0\"/></Barrier_>"
        "<AP_ name=\"a\" next=\"12345\"/>"
        "<Barrier_ medium=\"2\" reflect=\"false\"/>"
        "<SP_ name=\"s\"><signal apName=\"a\"/><other/><signal apName=\"b\"/></SP_>"
        "<Barrier_ medium=\"3\"/>"
        "<AP_ name=\"b\"/>"
        "</System_>";
    SystemPtr system(NewSystemIndoor(nullptr));
    NewBarrier(system.get())->medium = 7;
    tinyxml2::XMLDocument document;
    document.Parse(text.c_str());
    ASSERT_TRUE(ObjFromXML(system.get(), system.get(), document.RootElement()));

    std::vector<int> media;
    for (e_Barrier_* b = system->barriers; b != nullptr; b = b->next) media.push_back(b->medium);
    EXPECT_EQ(media, (std::vector<int>{7, 1, 2, 3}));
    // New walls take the system's interactions as read, then their own attributes.
    EXPECT_TRUE(system->barriers->next->reflect);
    EXPECT_FALSE(system->barriers->next->next->reflect);
    e_Vector_* corners = system->barriers->next->vectors;
    ASSERT_EQ(Count(corners), 2);
    EXPECT_EQ(corners->next->x, 2);
    EXPECT_STREQ(system->accessPoints->name, "a");
    EXPECT_STREQ(system->accessPoints->next->name, "b");
    EXPECT_EQ(system->accessPoints->next->next, nullptr);
    EXPECT_STREQ(system->samplePoints->signals->next->apName, "b");
}

TEST(SystemXml, MissingAttributesKeepDefaultsWithTheListedExceptions) {
    bool ok = false;
    SystemPtr system = ReadSystem(
        "<System_ height=\"tall\" traceLimit=\"seven\" only2d=\"maybe\" osmContent=\"\" "
        "osmFile=\"x.osm\" diffract=\"true\" held=\"true\">"
        "<AP_ frequency_GHz=\"5.2\" power=\"\"/>"
        "<Furniture_ type=\"4\"><location v1=\"1\" v2=\"2\" v3=\"3\" coord=\"0\"/>"
        "<forward v1=\"1\" v2=\"0\" v3=\"0\" coord=\"0\"/><up v1=\"0\" v2=\"0\" v3=\"1\" "
        "coord=\"0\"/></Furniture_>"
        "</System_>",
        &ok);
    ASSERT_TRUE(ok);
    e_System_* s = system.get();
    EXPECT_EQ(s->height, 3);
    EXPECT_EQ(s->traceLimit, 5);
    EXPECT_TRUE(s->only2d);
    EXPECT_EQ(s->osmContent, nullptr);
    EXPECT_EQ(s->osmFile, nullptr);
    EXPECT_FALSE(s->diffract || s->held);
    EXPECT_EQ(s->accessPoints->frequency_GHz, -1);
    EXPECT_EQ(s->accessPoints->power, 0.1);
    EXPECT_EQ(s->accessPoints->name, nullptr);
    EXPECT_EQ(s->furniture->type, 4);
    EXPECT_EQ(s->furniture->location.y, 2);
    EXPECT_EQ(s->furniture->forward.x, 0);
    EXPECT_EQ(s->furniture->up.z, 0);

    // A wall without "thickness" reads it as 0; other attributes keep what was there.
    e_Barrier_* barrier = NewBarrier(nullptr);
    barrier->thickness = 0.4;
    barrier->height_lower = 2;
    tinyxml2::XMLDocument document;
    document.Parse("<Barrier_ medium=\"3\"/>");
    EXPECT_TRUE(ObjFromXML(barrier, document.RootElement()));
    EXPECT_EQ(barrier->thickness, 0);
    EXPECT_EQ(barrier->height_lower, 2);
    EXPECT_EQ(barrier->medium, 3);
    DeleteList(barrier);
}

TEST(SystemXml, MalformedInputFailsCleanly) {
    // Signals need "apName" and vectors all four of their attributes: the faulty ones are
    // left out, the rest is read and the result is false.
    LogCapture capture;
    bool ok = true;
    SystemPtr system = ReadSystem(
        "<System_><SP_ name=\"s\"><signal receivedPower_dBW=\"-50\"/>"
        "<signal apName=\"b\" receivedPower_dBW=\"-60\"/></SP_>"
        "<Barrier_><Vector_ v1=\"1\" v2=\"2\" coord=\"0\"/><Vector_ v1=\"a\" v2=\"2\" v3=\"3\" "
        "coord=\"0\"/><Vector_ v1=\"4\" v2=\"5\" v3=\"6\" coord=\"0\"/></Barrier_></System_>",
        &ok);
    EXPECT_FALSE(ok);
    ASSERT_EQ(Count(system->samplePoints->signals), 1);
    EXPECT_EQ(system->samplePoints->signals->receivedPower_dBW, -60);
    ASSERT_EQ(Count(system->barriers->vectors), 1);
    EXPECT_EQ(system->barriers->vectors->x, 4);
    EXPECT_TRUE(capture.Contains("signal without apName"));

    testing::internal::CaptureStderr();
    EXPECT_FALSE(ObjFromXML(system.get(), system.get(), nullptr));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ObjFromXML() failed - no root element to load from\n");

    // Files: not XML, missing; the root's name is not checked when reading, but
    // FilehasSystem wants "System_".
    TempDir directory;
    std::ofstream(directory.File("notxml.xml")) << "System_ this is not XML <<";
    std::ofstream(directory.File("other.xml")) << "<Network height=\"9\"/>";
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SystemFromFile(system.get(), directory.File("notxml.xml").c_str()));
    EXPECT_FALSE(SystemFromFile(system.get(), directory.File("missing.xml").c_str()));
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(SystemFromFile(system.get(), directory.File("other.xml").c_str()));
    EXPECT_EQ(system->height, 9);
    EXPECT_FALSE(FilehasSystem(directory.File("other.xml").c_str()));
    std::string text = "unchanged";
    EXPECT_FALSE(SystemToString(nullptr, text));
    EXPECT_EQ(text, "unchanged");
    EXPECT_FALSE(SystemToFile(system.get(), directory.File("no/such/dir.xml").c_str()));
}

TEST(SystemXml, CsvListsEverySignalOfEverySamplePoint) {
    SystemPtr system(NewSystemIndoor(nullptr));
    TempDir directory;
    std::string file = directory.File("points.csv");
    const std::string header =
        "sampleName, x, y, z, dist(tx0), expectedPower_dBm, receivedPower_dBm, "
        "receivedPower_dBW\n";

    e_SamplePoint_* point = NewSamplePoint(system.get(), "sp1");
    SetVecXYZ(&point->location, 3, 4, 0);
    e_ReceivedSignal_* signal = NewReceivedSignal(point, "a");
    signal->expectedPower_dBm = -40;
    signal->receivedPower_dBm = -45.5;
    signal->receivedPower_dBW = -75.5;
    // Without access points the distance is -1; it is taken to the first one.
    ASSERT_TRUE(SystemToCSV(system.get(), file.c_str()));
    EXPECT_EQ(ReadFile(file), header + "sp1, 3, 4, 0, -1, -40, -45.5, -75.5\ndone\n");

    NewAccessPoint(system.get(), "a");
    SetVecXYZ(&NewAccessPoint(system.get(), "b")->location, 100, 0, 0);
    NewReceivedSignal(point, "b")->receivedPower_dBW = -90;
    NewSamplePoint(system.get(), "silent");
    e_SamplePoint_* unnamed = NewSamplePoint(system.get(), nullptr);
    SetVecXYZ(&unnamed->location, 1.5, 0, 2);
    NewReceivedSignal(unnamed, "a");
    ASSERT_TRUE(SystemToCSV(system.get(), file.c_str()));
    EXPECT_EQ(ReadFile(file), header +
                                  "sp1, 3, 4, 0, 5, -40, -45.5, -75.5\n"
                                  "sp1, 3, 4, 0, 5, 0, 0, -90\n"
                                  "<unknown>, 1.5, 0, 2, 2.5, 0, 0, 0\n"
                                  "done\n");
    EXPECT_FALSE(SystemToCSV(nullptr, file.c_str()));
}
