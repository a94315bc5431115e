#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "logging/Log.h"
#include "support/TempDir.h"

namespace {

class Collector : public LoggerExternal {
  public:
    void LogLine(const char* text) override { pieces.emplace_back(text); }
    std::vector<std::string> pieces;
};

// Restores the threshold, tag and log file of the static facility on leaving a test.
class LogStateGuard {
  public:
    LogStateGuard() : level(Log::getLevel()) {}
    ~LogStateGuard() {
        Log::CloseLogFile();
        Log::setLevel(level);
        Log::setPreStr("");
    }

  private:
    eOutputLevel level;
};

}  // namespace

// Every head and piece reaches the external loggers, whatever the level.
TEST(Log, ExternalLoggersReceiveEveryPieceAtEveryLevel) {
    Collector collector;
    Log::AddExternalLogger(&collector);
    Log::setPreStr("SERVER");
    Log::setLevel(OUTPUT_ERROR);
    Log::log(OUTPUT_INFORMATIVE) << "value = " << 42 << "\n";
    Log::log(OUTPUT_ERROR) << std::string("bad") << "\n";
    Log::log(7) << "x";
    Log::RemoveExternalLogger(&collector);
    Log::log(OUTPUT_ERROR) << "after removal\n";

    std::vector<std::string> expected = {
        "[SERVER, INF] ", "value = ", "42", "\n", "[SERVER, ERR] ", "bad", "\n",
        "[SERVER,    ] ", "x"};
    EXPECT_EQ(collector.pieces, expected);
    Log::setPreStr("");
}

// In a log file the level filters only the heads: text of entries above it stays.
TEST(Log, LogFileKeepsTextAboveLevelWithoutHead) {
    LogStateGuard guard;
    TempDir dir;
    std::string name = dir.File("run.log");
    Log::setLogFile(name);
    Log::setPreStr("T");

    Log::setLevel(OUTPUT_WARNING);
    Log::log(OUTPUT_ERROR) << "error " << 1 << "\n";
    Log::log(OUTPUT_WARNING) << "warning\n";
    Log::log(OUTPUT_INFORMATIVE) << "info " << true << "\n";
    Log::setLevel(OUTPUT_NOTHING);
    Log::log(OUTPUT_ERROR) << "quiet\n";

    EXPECT_EQ(ReadFile(name), "[T, ERR] error 1\n[T, WRN] warning\ninfo 1\nquiet\n");
}

TEST(Log, UnopenableLogFileIsReportedAndLeavesNoFile) {
    LogStateGuard guard;
    TempDir dir;
    std::string name = dir.File("missing/run.log");
    Collector collector;
    Log::AddExternalLogger(&collector);
    Log::setLogFile(name);
    Log::RemoveExternalLogger(&collector);

    std::string said;
    for (const std::string& piece : collector.pieces) said += piece;
    EXPECT_EQ(said, "[, ERR] setting up log to file " + name + " failed\n");
    EXPECT_FALSE(std::filesystem::exists(name));
}
