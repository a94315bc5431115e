#include <gtest/gtest.h>

#include <cstring>

#include "support/LogCapture.h"
#include "system/SystemRecords.h"

namespace {

// Frees a system even if a test left it held.
void Release(e_System_* system) {
    if (system == nullptr) return;
    system->held = false;
    DeleteSystem(&system);
}

}  // namespace

TEST(SystemRecords, IndoorAndUrbanSystemsStartWithTheirDefaults) {
    e_System_* indoor = NewSystemIndoor(nullptr);
    ASSERT_NE(indoor, nullptr);
    EXPECT_TRUE(indoor->isIndoorOnly);
    EXPECT_EQ(indoor->xMin, 0);
    EXPECT_EQ(indoor->xMax, 0);
    EXPECT_EQ(indoor->yMin, 0);
    EXPECT_EQ(indoor->yMax, 0);
    EXPECT_EQ(indoor->height, 3);
    EXPECT_EQ(indoor->ceilingMaterial, 6);
    EXPECT_EQ(indoor->ceilingThickness, 0.02);
    EXPECT_EQ(indoor->floorThickness, 0.02);
    EXPECT_EQ(indoor->lonMin, 0);
    EXPECT_EQ(indoor->lonMax, 0);
    EXPECT_EQ(indoor->latMin, 0);
    EXPECT_EQ(indoor->latMax, 0);
    EXPECT_EQ(indoor->osmFile, nullptr);
    EXPECT_EQ(indoor->osmContent, nullptr);
    EXPECT_FALSE(indoor->loadBuildings || indoor->loadRoads || indoor->loadSignals ||
                 indoor->loadTrees || indoor->loadTerrain);
    EXPECT_EQ(indoor->buildings, nullptr);
    EXPECT_EQ(indoor->floorMaterial, 8);
    EXPECT_EQ(indoor->barriers, nullptr);
    EXPECT_EQ(indoor->accessPoints, nullptr);
    EXPECT_EQ(indoor->samplePoints, nullptr);
    EXPECT_EQ(indoor->furniture, nullptr);
    EXPECT_TRUE(indoor->only2d);
    EXPECT_FALSE(indoor->held);
    EXPECT_EQ(indoor->pathLoss_model, 2);
    EXPECT_EQ(indoor->pathLoss_Exp, 2);
    EXPECT_EQ(indoor->rayGap, 1);
    EXPECT_EQ(indoor->traceLimit, 5);
    EXPECT_FALSE(indoor->reflect);
    EXPECT_TRUE(indoor->transmit);
    EXPECT_FALSE(indoor->diffract);
    EXPECT_EQ(indoor->failPowerValue, -100);

    // The argument is ignored: the result is a new record and the argument is untouched.
    NewBarrier(indoor);
    e_System_* urban = NewSystemUrban(indoor);
    ASSERT_NE(urban, nullptr);
    EXPECT_NE(urban, indoor);
    EXPECT_EQ(urban->barriers, nullptr);
    EXPECT_NE(indoor->barriers, nullptr);
    EXPECT_FALSE(urban->isIndoorOnly);
    EXPECT_TRUE(urban->reflect);
    EXPECT_FALSE(urban->transmit);
    EXPECT_TRUE(urban->diffract);
    EXPECT_EQ(urban->height, 3);
    EXPECT_EQ(urban->floorMaterial, 8);
    EXPECT_EQ(urban->traceLimit, 5);
    Release(indoor);
    Release(urban);
}

TEST(SystemRecords, MakersSetTheirDefaults) {
    e_Barrier_* barrier = NewBarrier(nullptr);
    EXPECT_EQ(barrier->vectors, nullptr);
    EXPECT_EQ(barrier->height_lower, 0);
    EXPECT_EQ(barrier->height_upper, 0);
    EXPECT_EQ(barrier->thickness, 0);
    EXPECT_EQ(barrier->medium, 0);
    EXPECT_TRUE(barrier->vertical);
    EXPECT_TRUE(barrier->thinBarrier);
    EXPECT_FALSE(barrier->reflect);
    EXPECT_TRUE(barrier->transmit);
    EXPECT_FALSE(barrier->diffract);
    EXPECT_EQ(barrier->next, nullptr);
    DeleteList(barrier);

    e_Building_* building = NewBuilding(nullptr);
    EXPECT_EQ(building->vectors, nullptr);
    EXPECT_EQ(building->height, 0);
    EXPECT_EQ(building->levelCount, 1);
    EXPECT_EQ(building->wallThickness, 0.3);
    EXPECT_EQ(building->wallMedium, 1);
    EXPECT_EQ(building->roofThickness, 0.3);
    EXPECT_EQ(building->roofMedium, 1);
    EXPECT_EQ(building->floorThickness, 0.3);
    EXPECT_EQ(building->floorMedium, 1);
    EXPECT_TRUE(building->thinBarrier);
    EXPECT_TRUE(building->reflect);
    EXPECT_FALSE(building->transmit);
    EXPECT_TRUE(building->diffract);
    EXPECT_EQ(building->next, nullptr);
    DeleteList(building);

    e_Furniture_* furniture = NewFurniture(nullptr);
    e_Furniture_ zero{};
    EXPECT_EQ(std::memcmp(furniture, &zero, sizeof(zero)), 0);
    DeleteList(furniture);

    const char* name = "AP one";
    e_AccessPoint_* accessPoint = NewAccessPoint(nullptr, name);
    EXPECT_NE(accessPoint->name, name);
    EXPECT_STREQ(accessPoint->name, name);
    EXPECT_EQ(accessPoint->location.coordSystem, 0);
    EXPECT_EQ(accessPoint->location.x, 0);
    EXPECT_EQ(accessPoint->channel, 1);
    EXPECT_EQ(accessPoint->frequency_GHz, -1);
    EXPECT_EQ(accessPoint->power, 0.1);
    EXPECT_EQ(accessPoint->size, 0.12);
    EXPECT_EQ(accessPoint->gain, 8);
    EXPECT_EQ(accessPoint->radPattern, 1);
    EXPECT_EQ(accessPoint->gainBeamWidth, 45);
    EXPECT_EQ(accessPoint->gainBeamHeight, 360);
    EXPECT_EQ(accessPoint->rotateVertical, 0);
    EXPECT_EQ(accessPoint->rotateHorizontal, 0);
    EXPECT_EQ(accessPoint->next, nullptr);
    DeleteList(accessPoint);

    e_SamplePoint_* samplePoint = NewSamplePoint(nullptr, nullptr);
    EXPECT_EQ(samplePoint->name, nullptr);
    EXPECT_EQ(samplePoint->size, 1);
    EXPECT_EQ(samplePoint->gain, 1);
    EXPECT_EQ(samplePoint->signals, nullptr);
    EXPECT_EQ(samplePoint->simElementID, -1);

    e_ReceivedSignal_* signal = NewReceivedSignal(samplePoint, "AP one");
    EXPECT_STREQ(signal->apName, "AP one");
    EXPECT_EQ(signal->receivedPower_dBW, 0);
    EXPECT_EQ(signal->receivedPower_dBm, 0);
    EXPECT_EQ(signal->receivedPathLoss_dB, 0);
    EXPECT_EQ(signal->receivedPathCount, 0);
    EXPECT_EQ(signal->expectedPower_dBm, 0);
    EXPECT_EQ(signal->expectedPathLoss_dB, 0);
    EXPECT_EQ(samplePoint->signals, signal);
    e_ReceivedSignal_* second = NewReceivedSignal(samplePoint, nullptr);
    EXPECT_EQ(second->apName, nullptr);
    EXPECT_EQ(signal->next, second);
    DeleteList(samplePoint);
}

TEST(SystemRecords, MakersAppendToTheSystemAndCopyItsInteractions) {
    e_System_* urban = NewSystemUrban(nullptr);
    e_Barrier_* first = NewBarrier(urban);
    e_Barrier_* second = NewBarrier(urban);
    e_Barrier_* third = nullptr;
    NewPiece(&third, urban);
    EXPECT_EQ(urban->barriers, first);
    EXPECT_EQ(first->next, second);
    EXPECT_EQ(second->next, third);
    EXPECT_EQ(third->next, nullptr);
    EXPECT_TRUE(first->reflect);
    EXPECT_FALSE(second->transmit);
    EXPECT_TRUE(third->diffract);

    e_System_* indoor = NewSystemIndoor(nullptr);
    e_Building_* building = NewBuilding(indoor);
    EXPECT_EQ(indoor->buildings, building);
    EXPECT_FALSE(building->reflect);
    EXPECT_TRUE(building->transmit);
    EXPECT_FALSE(building->diffract);

    e_AccessPoint_* named = NewAccessPoint(indoor, "a");
    e_AccessPoint_* unnamed = nullptr;
    NewPiece(&unnamed, indoor);
    EXPECT_EQ(indoor->accessPoints, named);
    EXPECT_EQ(named->next, unnamed);
    EXPECT_EQ(unnamed->name, nullptr);

    e_SamplePoint_* point = nullptr;
    NewPiece(&point, indoor);
    e_SamplePoint_* other = NewSamplePoint(indoor, "s");
    EXPECT_EQ(indoor->samplePoints, point);
    EXPECT_EQ(point->next, other);

    e_Furniture_* furniture = nullptr;
    NewPiece(&furniture, indoor);
    EXPECT_EQ(indoor->furniture, furniture);
    Release(urban);
    Release(indoor);
}

TEST(SystemRecords, VectorsAreSetAndMeasuredByTheirCartesianParts) {
    e_Vector_* geographic = NewVectorLLH(8.5, 47.25, 410);
    EXPECT_EQ(geographic->coordSystem, 1);
    EXPECT_EQ(geographic->lon, 8.5);
    EXPECT_EQ(geographic->lat, 47.25);
    EXPECT_EQ(geographic->height, 410);
    EXPECT_EQ(geographic->x, 0);

    e_Vector_* cartesian = NewVectorXYZ(3, 4, 12);
    EXPECT_EQ(cartesian->coordSystem, 0);
    EXPECT_EQ(cartesian->z, 12);
    EXPECT_EQ(pointDistance(cartesian, geographic), 13);

    SetVecXYZ(geographic, 3, 0, 12);
    EXPECT_EQ(geographic->coordSystem, 0);
    EXPECT_EQ(geographic->lon, 8.5);
    EXPECT_EQ(pointDistance(cartesian, geographic), 4);
    SetVecLLH(cartesian, 1, 2, 3);
    EXPECT_EQ(cartesian->coordSystem, 1);
    EXPECT_EQ(cartesian->x, 3);

    EXPECT_EQ(pointDistance(cartesian, nullptr), -1);
    cartesian->next = geographic;
    DeleteList(cartesian);
}

TEST(SystemRecords, DeleteSystemSparesHeldRecordsAndFreesEverythingElse) {
    DeleteSystem(nullptr);
    e_System_* none = nullptr;
    DeleteSystem(&none);
    EXPECT_EQ(none, nullptr);

    e_System_* system = NewSystemIndoor(nullptr);
    system->osmFile = CopyString("map.osm");
    system->osmContent = CopyString("<osm/>");
    NewBuilding(system)->vectors = NewVectorXYZ(0, 0, 0);
    e_Barrier_* barrier = NewBarrier(system);
    barrier->vectors = NewVectorXYZ(0, 0, 0);
    barrier->vectors->next = NewVectorLLH(1, 1, 0);
    NewAccessPoint(system, "a");
    NewReceivedSignal(NewSamplePoint(system, "s"), "a");
    NewFurniture(system);

    system->held = true;
    DeleteSystem(&system);
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->barriers, barrier);
    EXPECT_STREQ(system->accessPoints->name, "a");

    // Released once the holder lets go; the sanitizer build checks that nothing leaks.
    system->held = false;
    DeleteSystem(&system);
    EXPECT_EQ(system, nullptr);
}

TEST(SystemRecords, PrintDumpsVectorsBarriersAndBuildingsOnly) {
    e_System_* system = NewSystemIndoor(nullptr);
    e_Barrier_* barrier = NewBarrier(system);
    barrier->height_lower = 1.5;
    barrier->vectors = NewVectorXYZ(1, 2, 3);
    barrier->vectors->next = NewVectorXYZ(4, 5, 6);
    e_Building_* building = NewBuilding(system);
    building->levelCount = 4;
    {
        LogCapture capture;
        Print(barrier);
        EXPECT_TRUE(capture.Contains("print barrier: height_lower = 1.5"));
        EXPECT_TRUE(capture.Contains("print vector: "));
        EXPECT_TRUE(capture.Contains("x = 4, y = 5, z = 6"));
    }
    {
        LogCapture capture;
        Print(building);
        EXPECT_TRUE(capture.Contains("print building: height = 0, levelCount = 4"));
    }
    {
        LogCapture capture;
        Print(NewAccessPoint(system, "a"));
        Print(NewSamplePoint(system, "s"));
        Print(NewFurniture(system));
        Print(system);
        EXPECT_EQ(capture.Text(), "");
    }
    Release(system);
}
