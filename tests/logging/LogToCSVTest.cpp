#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "logging/LogToCSV.h"
#include "support/TempDir.h"

namespace {

const std::string header = "logName,pId,procName,timeStamp,runTime,user,'message'";
const std::string fields = "er,321,,2024-05-06 07:08:09.010,55,ann,";

std::vector<LogLine> MakeLines(int count, const std::string& message = "") {
    LogLine line{"er", 321, "", "2024-05-06 07:08:09.010", 55, "ann", message};
    return std::vector<LogLine>(count, line);
}

// Lines below the header of a CSV file, which must start with the header.
size_t BodyLines(const std::string& name) {
    std::vector<std::string> lines = ReadLines(name);
    EXPECT_EQ(lines.empty() ? "" : lines[0], header) << name;
    return lines.empty() ? 0 : lines.size() - 1;
}

}  // namespace

// Fields are written as they are, the message in single quotes up to its first newline;
// a comma in a message is not quoted further. A file that cannot be opened loses lines.
TEST(LogToCSV, WritesHeaderAndUnescapedLines) {
    TempDir dir;
    std::string base = dir.File("server");
    LogToCSV csv(base.c_str());
    EXPECT_EQ(ReadFile(base + "_0.csv"), header + "\n");
    std::vector<LogLine> lines = MakeLines(1, "a, b");
    lines.push_back(MakeLines(1, "first\nsecond")[0]);
    csv.Write(lines);
    EXPECT_EQ(ReadLines(base + "_0.csv"),
              (std::vector<std::string>{header, fields + "'a, b'", fields + "'first'"}));

    LogToCSV lost(dir.File("missing/server").c_str());
    lost.Write(lines);
    EXPECT_FALSE(lost.OpenFile());
    EXPECT_FALSE(std::filesystem::exists(dir.File("missing")));
}

// The first file takes one line more than the limit, each later file the limit.
TEST(LogToCSV, RotatesAtFiftyThousandLines) {
    TempDir dir;
    std::string base = dir.File("server");
    LogToCSV csv(base.c_str());
    std::vector<LogLine> lines = MakeLines(50000);
    csv.Write(lines);
    lines = MakeLines(50002);
    csv.Write(lines);
    EXPECT_EQ(BodyLines(base + "_0.csv"), 50001u);
    EXPECT_EQ(BodyLines(base + "_1.csv"), 50000u);
    EXPECT_EQ(BodyLines(base + "_2.csv"), 1u);

    EXPECT_FALSE(csv.SetMaxLines(0));
    EXPECT_TRUE(csv.OpenFile());
    EXPECT_EQ(BodyLines(base + "_3.csv"), 0u);
    EXPECT_FALSE(std::filesystem::exists(base + "_4.csv"));
}
