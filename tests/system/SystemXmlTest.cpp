#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/LogCapture.h"
#include "system/SystemToXML.h"
#include "support/TempDir.h"

namespace {

struct SystemDeleter {
    void operator()(e_System_* system) const {
        system->held = false;
        DeleteSystem(&system);
    }
};
using SystemPtr = std::unique_ptr<e_System_, SystemDeleter>;

// A system with every kind of record, geographic and cartesian corners and signals.
// Fields that are written but not read back (frequency_GHz, furniture forward and up)
// keep their defaults so that the text survives a round trip.
SystemPtr BuildRichSystem() {
    SystemPtr system(NewSystemUrban(nullptr));
    e_System_* s = system.get();
    s->xMin = -10.5;
    s->xMax = 20.25;
    s->yMin = -3;
    s->yMax = 44.125;
    s->height = 12.5;
    s->ceilingMaterial = 3;
    s->ceilingThickness = 0.125;
    s->floorThickness = 0.5;
    s->lonMin = 8.5;
    s->lonMax = 8.5625;
    s->latMin = 47.375;
    s->latMax = 47.4375;
    s->osmFile = CopyString("map.osm");
    s->osmContent = CopyString("<osm version=\"0.6\">\n  <node id='1' lat=\"47.4\"/>\n</osm>");
    s->loadBuildings = true;
    s->loadTerrain = true;
    s->floorMaterial = 9;
    s->only2d = false;
    s->pathLoss_model = 4;
    s->pathLoss_Exp = 2.5;
    s->rayGap = 0.25;
    s->traceLimit = 7;
    s->failPowerValue = -95.5;

    e_Building_* building = NewBuilding(s);
    building->height = 21;
    building->levelCount = 7;
    building->wallMedium = 2;
    building->vectors = NewVectorLLH(8.54321, 47.36789, 0);
    building->vectors->next = NewVectorLLH(8.5441, 47.3682, 0);
    building->vectors->next->next = NewVectorLLH(-0.1278, 51.5074, 11);

    e_Barrier_* wall = NewBarrier(s);
    wall->height_upper = 2.75;
    wall->thickness = 0.2;
    wall->medium = 3;
    wall->vertical = false;
    wall->vectors = NewVectorXYZ(0, 0, 0);
    wall->vectors->next = NewVectorXYZ(5.5, -2.25, 1e-3);
    e_Barrier_* glass = NewBarrier(s);
    glass->medium = 5;
    glass->thinBarrier = false;
    glass->vectors = NewVectorLLH(8.55, 47.37, 2);
    NewBarrier(s);  // a wall without corners

    e_AccessPoint_* main = NewAccessPoint(s, "AP <main> & \"lobby\"");
    SetVecXYZ(&main->location, 1, 2, 2.5);
    main->channel = 40;
    main->power = 0.2;
    main->radPattern = 3;
    main->rotateVertical = -15;
    main->rotateHorizontal = 90;
    e_AccessPoint_* roof = NewAccessPoint(s, "roof");
    SetVecLLH(&roof->location, 8.5432, 47.3679, 30);

    e_SamplePoint_* desk = NewSamplePoint(s, "desk 'one'");
    SetVecXYZ(&desk->location, 4, 6, 1);
    desk->simElementID = 12;
    e_ReceivedSignal_* fromMain = NewReceivedSignal(desk, main->name);
    fromMain->receivedPower_dBW = -77.25;
    fromMain->receivedPower_dBm = -47.25;
    fromMain->receivedPathLoss_dB = 61.5;
    fromMain->receivedPathCount = 9;
    fromMain->expectedPower_dBm = -50;
    fromMain->expectedPathLoss_dB = 60;
    NewReceivedSignal(desk, "roof")->receivedPower_dBW = -101;
    NewSamplePoint(s, nullptr)->size = 0.5;

    e_Furniture_* table = NewFurniture(s);
    table->type = 2;
    table->length = 1.6;
    table->width = 0.8;
    table->height = 0.75;
    SetVecXYZ(&table->location, 2, 3, 0);
    return system;
}

SystemPtr ReadSystem(const std::string& text, bool* ok = nullptr) {
    SystemPtr system(NewSystemIndoor(nullptr));
    tinyxml2::XMLDocument document(true, tinyxml2::COLLAPSE_WHITESPACE);
    document.Parse(text.c_str());
    bool read = ObjFromXML(system.get(), system.get(), document.RootElement());
    if (ok != nullptr) *ok = read;
    return system;
}

void WriteFile(const std::string& file, const std::string& content) {
    std::ofstream(file) << content;
}

template <typename T>
int Count(const T* list) {
    int count = 0;
    for (; list != nullptr; list = list->next) ++count;
    return count;
}

}  // namespace

TEST(SystemXml, WritesAttributesAndElementsInTheirOrder) {
    SystemPtr system(NewSystemIndoor(nullptr));
    e_System_* s = system.get();
    s->osmFile = CopyString("f.osm");
    s->osmContent = CopyString("c");
    e_Building_* building = NewBuilding(s);
    building->wallThickness = building->roofThickness = building->floorThickness = 0.25;
    building->vectors = NewVectorXYZ(1, 2, 3);
    NewBarrier(s)->vectors = NewVectorLLH(8.5, 47.25, 400);
    e_AccessPoint_* accessPoint = NewAccessPoint(s, "a");
    accessPoint->power = 0.5;
    SetVecXYZ(&accessPoint->location, 1, 0, 2);
    NewReceivedSignal(NewSamplePoint(s, "s"), "a")->receivedPower_dBW = -70.5;
    NewFurniture(s)->type = 1;

    std::string text;
    ASSERT_TRUE(SystemToString(s, text));
    const std::string expected =
        "<System_ isIndoorOnly=\"true\" xMin=\"0\" xMax=\"0\" yMin=\"0\" yMax=\"0\" height=\"3\" "
        "ceilingMaterial=\"6\" ceilingThickness=\"0.02\" floorThickness=\"0.02\" lonMin=\"0\" "
        "lonMax=\"0\" latMin=\"0\" latMax=\"0\" osmFile=\"f.osm\" osmContent=\"c\" "
        "loadBuildings=\"false\" loadRoads=\"false\" loadSignals=\"false\" loadTrees=\"false\" "
        "loadTerrain=\"false\" floorMaterial=\"8\" only2d=\"true\" pathLoss_model=\"2\" "
        "pathLoss_Exp=\"2\" rayGap=\"1\" traceLimit=\"5\" reflect=\"false\" transmit=\"true\" "
        "failPowerValue=\"-100\">\n"
        "    <Building_ height=\"0\" levelCount=\"1\" wallThickness=\"0.25\" wallMedium=\"1\" "
        "roofThickness=\"0.25\" roofMedium=\"1\" floorThickness=\"0.25\" floorMedium=\"1\" "
        "thinBarrier=\"true\" reflect=\"false\" transmit=\"true\">\n"
        "        <Vector_ v1=\"1\" v2=\"2\" v3=\"3\" coord=\"0\"/>\n"
        "    </Building_>\n"
        "    <Barrier_ height_lower=\"0\" height_upper=\"0\" thickness=\"0\" medium=\"0\" "
        "vertical=\"true\" thinBarrier=\"true\" reflect=\"false\" transmit=\"true\">\n"
        "        <Vector_ v1=\"85000\" v2=\"472500\" v3=\"400\" coord=\"1\"/>\n"
        "    </Barrier_>\n"
        "    <AP_ name=\"a\" channel=\"1\" frequency_GHz=\"-1\" power=\"0.5\" size=\"0.12\" "
        "gain=\"8\" radPattern=\"1\" gainBeamWidth=\"45\" gainBeamHeight=\"360\" "
        "rotateVertical=\"0\" rotateHorizontal=\"0\">\n"
        "        <location v1=\"1\" v2=\"0\" v3=\"2\" coord=\"0\"/>\n"
        "    </AP_>\n"
        "    <SP_ name=\"s\" size=\"1\" gain=\"1\" simElementID=\"-1\">\n"
        "        <location v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "        <signal apName=\"a\" receivedPower_dBW=\"-70.5\" receivedPower_dBm=\"0\" "
        "receivedPathLoss_dB=\"0\" expectedPower_dBm=\"0\" expectedPathLoss_dB=\"0\" "
        "receivedPathCount=\"0\"/>\n"
        "    </SP_>\n"
        "    <Furniture_ type=\"1\" length=\"0\" width=\"0\" height=\"0\">\n"
        "        <location v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "        <forward v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "        <up v1=\"0\" v2=\"0\" v3=\"0\" coord=\"0\"/>\n"
        "    </Furniture_>\n"
        "</System_>\n";
    EXPECT_EQ(text, expected);

    // Without content a system is attributes only.
    SystemPtr empty(NewSystemUrban(nullptr));
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = document.NewElement("System_");
    ObjToXML(empty.get(), root);
    EXPECT_TRUE(root->NoChildren());
    EXPECT_EQ(root->Attribute("osmFile"), nullptr);
    EXPECT_STREQ(root->Attribute("reflect"), "true");
    EXPECT_EQ(root->Attribute("diffract"), nullptr);
    EXPECT_EQ(root->Attribute("held"), nullptr);
    document.DeleteNode(root);
}

TEST(SystemXml, RichSystemSurvivesTextAndFileUnchanged) {
    SystemPtr original = BuildRichSystem();
    std::string first;
    ASSERT_TRUE(SystemToString(original.get(), first));

    bool ok = false;
    SystemPtr fromText = ReadSystem(first, &ok);
    ASSERT_TRUE(ok);
    std::string second;
    ASSERT_TRUE(SystemToString(fromText.get(), second));
    // osmFile is written but never read back.
    std::string withoutOsmFile = first;
    withoutOsmFile.erase(withoutOsmFile.find(" osmFile=\"map.osm\""), 18);
    EXPECT_EQ(second, withoutOsmFile);

    TempDir directory;
    std::string file = directory.File("system.xml");
    ASSERT_TRUE(SystemToFile(fromText.get(), file.c_str()));
    EXPECT_EQ(ReadFile(file), second);
    EXPECT_TRUE(FilehasSystem(file.c_str()));
    SystemPtr fromFile(NewSystemIndoor(nullptr));
    ASSERT_TRUE(SystemFromFile(fromFile.get(), file.c_str()));
    std::string third;
    ASSERT_TRUE(SystemToString(fromFile.get(), third));
    EXPECT_EQ(third, second);

    // What the text cannot show.
    e_System_* read = fromFile.get();
    EXPECT_EQ(read->osmFile, nullptr);
    EXPECT_STREQ(read->osmContent, original->osmContent);
    EXPECT_FALSE(read->held);
    EXPECT_FALSE(read->diffract);  // not written: the reader's own default stays
    EXPECT_FALSE(read->barriers->diffract);
    EXPECT_STREQ(read->accessPoints->name, "AP <main> & \"lobby\"");
    EXPECT_NE(read->accessPoints->name, original->accessPoints->name);
    EXPECT_EQ(read->samplePoints->next->name, nullptr);
    e_Vector_* corner = read->buildings->vectors;
    EXPECT_EQ(corner->coordSystem, 1);
    EXPECT_DOUBLE_EQ(corner->lon, 8.54321);
    EXPECT_DOUBLE_EQ(corner->lat, 47.36789);
    EXPECT_DOUBLE_EQ(corner->next->next->lon, -0.1278);
    EXPECT_EQ(corner->x, 0);
    EXPECT_EQ(read->barriers->vectors->next->z, 1e-3);
    EXPECT_EQ(read->barriers->next->next->vectors, nullptr);
    EXPECT_EQ(read->accessPoints->next->location.coordSystem, 1);
    EXPECT_DOUBLE_EQ(read->accessPoints->next->location.lat, 47.3679);
    EXPECT_EQ(Count(read->samplePoints->signals), 2);
    EXPECT_EQ(read->samplePoints->signals->receivedPathCount, 9);
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

    // Records given another system land in that system.
    SystemPtr target(NewSystemIndoor(nullptr));
    SystemPtr record(NewSystemIndoor(nullptr));
    ASSERT_TRUE(ObjFromXML(target.get(), record.get(), document.RootElement()));
    EXPECT_EQ(record->barriers, nullptr);
    EXPECT_TRUE(record->reflect);
    EXPECT_EQ(Count(target->barriers), 3);
}

TEST(SystemXml, MissingAttributesKeepDefaultsWithTheListedExceptions) {
    bool ok = false;
    SystemPtr system = ReadSystem(
        "<System_ height=\"tall\" traceLimit=\"seven\" only2d=\"maybe\" osmContent=\"\" "
        "osmFile=\"x.osm\" diffract=\"true\" held=\"true\">"
        "<AP_ frequency_GHz=\"5.2\" power=\"\"><location v1=\"1\" v2=\"2\" v3=\"3\" "
        "coord=\"0\"/></AP_>"
        "<Furniture_ type=\"4\"><location v1=\"1\" v2=\"2\" v3=\"3\" coord=\"0\"/>"
        "<forward v1=\"1\" v2=\"0\" v3=\"0\" coord=\"0\"/><up v1=\"0\" v2=\"0\" v3=\"1\" "
        "coord=\"0\"/></Furniture_>"
        "<SP_/></System_>",
        &ok);
    ASSERT_TRUE(ok);
    e_System_* s = system.get();
    EXPECT_EQ(s->height, 3);
    EXPECT_EQ(s->traceLimit, 5);
    EXPECT_TRUE(s->only2d);
    EXPECT_EQ(s->osmContent, nullptr);
    EXPECT_EQ(s->osmFile, nullptr);
    EXPECT_FALSE(s->diffract);
    EXPECT_FALSE(s->held);
    EXPECT_EQ(s->accessPoints->frequency_GHz, -1);
    EXPECT_EQ(s->accessPoints->power, 0.1);
    EXPECT_EQ(s->accessPoints->name, nullptr);
    EXPECT_EQ(s->accessPoints->location.z, 3);
    e_Furniture_* furniture = s->furniture;
    EXPECT_EQ(furniture->type, 4);
    EXPECT_EQ(furniture->location.y, 2);
    EXPECT_EQ(furniture->forward.x, 0);
    EXPECT_EQ(furniture->up.z, 0);
    EXPECT_EQ(s->samplePoints->simElementID, -1);

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
    tinyxml2::XMLDocument document;
    document.Parse("<System_/>");
    EXPECT_FALSE(ObjFromXML(nullptr, nullptr, document.RootElement()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ObjFromXML() failed - no root element to load from\n"
              "ObjFromXML() failed - obj == NULL\n");

    TempDir directory;
    std::string notXml = directory.File("notxml.xml");
    std::string noRoot = directory.File("noroot.xml");
    std::string otherRoot = directory.File("other.xml");
    WriteFile(notXml, "System_ this is not XML <<");
    WriteFile(noRoot, "<!-- nothing here -->");
    WriteFile(otherRoot, "<Network height=\"9\"/>");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SystemFromFile(system.get(), notXml.c_str()));
    EXPECT_FALSE(SystemFromFile(system.get(), noRoot.c_str()));
    EXPECT_FALSE(SystemFromFile(system.get(), directory.File("missing.xml").c_str()));
    EXPECT_FALSE(SystemFromFile(system.get(), nullptr));
    testing::internal::GetCapturedStderr();
    // The root's name is not checked when reading.
    EXPECT_TRUE(SystemFromFile(system.get(), otherRoot.c_str()));
    EXPECT_EQ(system->height, 9);

    EXPECT_FALSE(FilehasSystem(notXml.c_str()));
    EXPECT_FALSE(FilehasSystem(noRoot.c_str()));
    EXPECT_FALSE(FilehasSystem(otherRoot.c_str()));
    EXPECT_FALSE(FilehasSystem(nullptr));

    std::string text = "unchanged";
    EXPECT_FALSE(SystemToString(nullptr, text));
    EXPECT_EQ(text, "unchanged");
    EXPECT_FALSE(SystemToFile(nullptr, directory.File("none.xml").c_str()));
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
    EXPECT_FALSE(SystemToCSV(system.get(), directory.File("no/such/dir.csv").c_str()));
}
