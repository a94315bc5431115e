#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "logging/Log.h"
#include "support/LogCapture.h"
#include "support/TempDir.h"

// Every head and piece reaches the external loggers, whatever the level.
TEST(Log, ExternalLoggersReceiveEveryPieceAtEveryLevel) {
    LogCapture capture;
    Log::setPreStr("SERVER");
    Log::setLevel(OUTPUT_ERROR);
    Log::log(OUTPUT_INFORMATIVE) << "value = " << 42 << "\n";
    Log::log(OUTPUT_ERROR) << std::string("bad") << "\n";
    Log::log(7) << "x";
    Log::setPreStr("");
    EXPECT_EQ(capture.Text(), "[SERVER, INF] value = 42\n[SERVER, ERR] bad\n[SERVER,    ] x");
}

// In a log file the level filters only the heads: text of entries above it stays. A file
// that cannot be opened is reported and not made.
TEST(Log, LogFileKeepsTextAboveLevelWithoutHead) {
    eOutputLevel level = Log::getLevel();
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
    Log::CloseLogFile();
    EXPECT_EQ(ReadFile(name), "[T, ERR] error 1\n[T, WRN] warning\ninfo 1\nquiet\n");

    Log::setPreStr("");
    LogCapture capture;
    std::string missing = dir.File("missing/run.log");
    Log::setLogFile(missing);
    Log::setLevel(level);
    EXPECT_EQ(capture.Text(), "[, ERR] setting up log to file " + missing + " failed\n");
    EXPECT_FALSE(std::filesystem::exists(missing));
}
