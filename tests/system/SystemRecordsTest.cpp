#include <gtest/gtest.h>

#include "system/SystemRecords.h"

// The defaults of every record are checked through their XML text in SystemXmlTest,
// distances through the CSV of sample points, held systems with the wrappers.

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
