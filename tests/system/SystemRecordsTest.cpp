#include <gtest/gtest.h>

#include "system/SystemRecords.h"

// The defaults of every record are checked through their XML text in SystemXmlTest.

// Makers append to the system's lists in order and copy its interactions; a named record
// keeps its own copy of the name.
TEST(SystemRecords, MakersAppendToTheSystemAndCopyItsInteractions) {
    e_System_* urban = NewSystemUrban(nullptr);
    e_Barrier_* first = NewBarrier(urban);
    e_Barrier_* second = nullptr;
    NewPiece(&second, urban);
    EXPECT_EQ(urban->barriers, first);
    EXPECT_EQ(first->next, second);
    EXPECT_TRUE(second->reflect && !second->transmit && second->diffract);

    const char* name = "AP one";
    e_AccessPoint_* named = NewAccessPoint(urban, name);
    e_AccessPoint_* unnamed = nullptr;
    NewPiece(&unnamed, urban);
    EXPECT_NE(named->name, name);
    EXPECT_STREQ(named->name, name);
    EXPECT_EQ(named->next, unnamed);
    EXPECT_EQ(unnamed->name, nullptr);

    e_SamplePoint_* point = nullptr;
    NewPiece(&point, urban);
    EXPECT_EQ(NewSamplePoint(urban, "s"), point->next);
    e_ReceivedSignal_* signal = NewReceivedSignal(point, "AP one");
    EXPECT_EQ(point->signals, signal);
    EXPECT_EQ(NewReceivedSignal(point, nullptr), signal->next);
    e_Building_* building = nullptr;
    NewPiece(&building, urban);
    e_Furniture_* furniture = nullptr;
    NewPiece(&furniture, urban);
    EXPECT_EQ(urban->buildings, building);
    EXPECT_EQ(urban->furniture, furniture);
    DeleteSystem(&urban);
}

// Distances are taken between the cartesian parts.
TEST(SystemRecords, PointDistanceUsesCartesianParts) {
    e_Vector_* geographic = NewVectorLLH(8.5, 47.25, 410);
    e_Vector_* cartesian = NewVectorXYZ(3, 4, 12);
    EXPECT_EQ(pointDistance(cartesian, geographic), 13);
    SetVecXYZ(geographic, 3, 0, 12);
    EXPECT_EQ(pointDistance(cartesian, geographic), 4);
    EXPECT_EQ(pointDistance(cartesian, nullptr), -1);
    cartesian->next = geographic;
    DeleteList(cartesian);
}

// A held system is spared; everything else goes (the sanitizer build checks for leaks).
TEST(SystemRecords, DeleteSystemSparesHeldRecordsAndFreesEverythingElse) {
    DeleteSystem(nullptr);
    e_System_* system = NewSystemIndoor(nullptr);
    system->osmFile = CopyString("map.osm");
    system->osmContent = CopyString("<osm/>");
    NewBuilding(system)->vectors = NewVectorXYZ(0, 0, 0);
    e_Barrier_* barrier = NewBarrier(system);
    barrier->vectors = NewVectorXYZ(0, 0, 0);
    barrier->vectors->next = NewVectorLLH(1, 1, 0);
    NewReceivedSignal(NewSamplePoint(system, "s"), "a");
    NewFurniture(system);
    system->held = true;
    DeleteSystem(&system);
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->barriers, barrier);
    system->held = false;
    DeleteSystem(&system);
    EXPECT_EQ(system, nullptr);
    DeleteSystem(&system);
}
