#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "logging/LogToCSV.h"
#include "logging/Logging.h"
#include "support/TempDir.h"

namespace {

const char* const header = "logName,pId,procName,timeStamp,runTime,user,'message'";

LogLine MakeLine(const std::string& message) {
    LogLine line;
    line.logName = "er";
    line.pId = 321;
    line.timeStamp = "2024-05-06 07:08:09.010";
    line.runTime = 55;
    line.user = "ann";
    line.message = message;
    return line;
}

std::vector<LogLine> MakeLines(int count) {
    std::vector<LogLine> lines;
    for (int i = 0; i < count; i++) lines.push_back(MakeLine("line " + std::to_string(i)));
    return lines;
}

// Lines below the header of a CSV file.
size_t BodyLines(const std::string& name) {
    std::vector<std::string> lines = ReadLines(name);
    EXPECT_FALSE(lines.empty()) << name;
    EXPECT_EQ(lines.empty() ? "" : lines[0], header) << name;
    return lines.empty() ? 0 : lines.size() - 1;
}

}  // namespace

// Fields are written as they are, the message in single quotes up to its first newline;
// a comma in a message is not quoted further.
TEST(LogToCSV, WritesHeaderAndUnescapedLines) {
    TempDir dir;
    std::string base = dir.File("server");
    LogToCSV csv(base.c_str());
    EXPECT_EQ(ReadFile(base + "_0.csv"), std::string(header) + "\n");

    std::vector<LogLine> lines = {MakeLine("a, b"), MakeLine("first\nsecond"), MakeLine("")};
    csv.Write(lines);
    EXPECT_EQ(ReadLines(base + "_0.csv"),
              (std::vector<std::string>{header, "er,321,,2024-05-06 07:08:09.010,55,ann,'a, b'",
                                        "er,321,,2024-05-06 07:08:09.010,55,ann,'first'",
                                        "er,321,,2024-05-06 07:08:09.010,55,ann,''"}));
}

// The first file takes one line more than the limit, each later file the limit.
TEST(LogToCSV, RotatesAtMaxLines) {
    TempDir dir;
    std::string base = dir.File("rot");
    LogToCSV csv(base.c_str(), 3);
    std::vector<LogLine> lines = MakeLines(6);
    csv.Write(lines);
    lines = MakeLines(4);
    csv.Write(lines);

    EXPECT_EQ(BodyLines(base + "_0.csv"), 4u);
    EXPECT_EQ(BodyLines(base + "_1.csv"), 3u);
    EXPECT_EQ(BodyLines(base + "_2.csv"), 3u);
    EXPECT_EQ(BodyLines(base + "_3.csv"), 0u);
    EXPECT_FALSE(std::filesystem::exists(base + "_4.csv"));
    EXPECT_EQ(ReadLines(base + "_1.csv")[1], "er,321,,2024-05-06 07:08:09.010,55,ann,'line 4'");

    EXPECT_FALSE(csv.SetMaxLines(0));
    EXPECT_TRUE(csv.SetMaxLines(1));
    lines = MakeLines(2);
    csv.Write(lines);
    EXPECT_EQ(BodyLines(base + "_3.csv"), 1u);
    EXPECT_EQ(BodyLines(base + "_4.csv"), 1u);
    EXPECT_TRUE(csv.OpenFile());
    EXPECT_EQ(BodyLines(base + "_5.csv"), 0u);
}

TEST(LogToCSV, DefaultLimitIsFiftyThousand) {
    TempDir dir;
    std::string base = dir.File("big");
    LogToCSV csv(base.c_str());
    std::vector<LogLine> lines = MakeLines(50002);
    csv.Write(lines);
    EXPECT_EQ(BodyLines(base + "_0.csv"), 50001u);
    EXPECT_EQ(BodyLines(base + "_1.csv"), 1u);
}

// A log's line reaches the file only once its newline has come.
TEST(LogToCSV, ReceivesFinishedLinesOfALog) {
    TempDir dir;
    std::string base = dir.File("server");
    auto* csv = new LogToCSV(base.c_str());
    Logging log("er");
    log.AddWriter(csv);
    log.LogStraightToStream(true);
    log << "waiting, ";
    EXPECT_EQ(BodyLines(base + "_0.csv"), 0u);
    log << "done\n";
    std::vector<std::string> lines = ReadLines(base + "_0.csv");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1].substr(0, 3), "er,");
    EXPECT_EQ(lines[1].substr(lines[1].size() - 16), ",'waiting, done'");

    log.ClearWriters();
    LogWriter::ClearAll();
}

// A file that cannot be opened is not reported; writing to it does nothing.
TEST(LogToCSV, UnopenableFileLosesLinesQuietly) {
    TempDir dir;
    std::string base = dir.File("missing/server");
    LogToCSV csv(base.c_str());
    std::vector<LogLine> lines = MakeLines(2);
    csv.Write(lines);
    EXPECT_FALSE(csv.OpenFile());
    EXPECT_FALSE(std::filesystem::exists(base + "_0.csv"));
}
