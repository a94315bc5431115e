#include <gtest/gtest.h>

#include <sstream>

#include "client/ResultTable.h"
#include "support/TempDir.h"
#include "system/SystemRecords.h"

namespace {

e_ReceivedSignal_* AddSignal(e_SamplePoint_* point, const char* apName, double power, double loss,
                             int paths) {
    e_ReceivedSignal_* signal = NewReceivedSignal(point, apName);
    signal->receivedPower_dBm = power;
    signal->receivedPathLoss_dB = loss;
    signal->receivedPathCount = paths;
    return signal;
}

}  // namespace

TEST(ResultTable, OneRowPerSignalAsTextAndCsv) {
    e_System_* system = NewSystemIndoor(nullptr);
    e_SamplePoint_* first = NewSamplePoint(system, "desk");
    AddSignal(first, "ap-1", -41.256, 61.5, 3);
    AddSignal(first, "hall, north", -80, 100.126, 12);
    NewSamplePoint(system, "no signals");
    e_SamplePoint_* unnamed = NewSamplePoint(system, nullptr);
    AddSignal(unnamed, "ap-1", -120, 140, 0);

    ResultTable table(system);

    std::ostringstream text;
    table.PrintText(text);
    EXPECT_EQ(text.str(),
              "sample point  access point  power (dBm)  path loss (dB)  paths\n"
              "desk          ap-1               -41.26           61.50      3\n"
              "desk          hall, north        -80.00          100.13     12\n"
              "<unknown>     ap-1              -120.00          140.00      0\n");

    TempDir directory;
    ASSERT_TRUE(table.WriteCSV(directory.File("results.csv")));
    EXPECT_EQ(ReadFile(directory.File("results.csv")),
              "samplePoint,accessPoint,receivedPower_dBm,receivedPathLoss_dB,receivedPathCount\n"
              "desk,ap-1,-41.256,61.5,3\n"
              "desk,\"hall, north\",-80,100.126,12\n"
              "<unknown>,ap-1,-120,140,0\n");
    EXPECT_FALSE(table.WriteCSV(directory.File("missing/results.csv")));
    DeleteSystem(&system);

    std::ostringstream empty;
    ResultTable(nullptr).PrintText(empty);
    EXPECT_EQ(empty.str(), "sample point  access point  power (dBm)  path loss (dB)  paths\n");
}
