#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "logging/Log.h"

namespace {

class Collector : public LoggerExternal {
public:
    void LogLine(const char* text) override { pieces.emplace_back(text); }
    std::vector<std::string> pieces;
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

    std::vector<std::string> expected = {"[SERVER, INF] ", "value = ", "42", "\n",
                                         "[SERVER, ERR] ", "bad",      "\n", "[SERVER,    ] ",
                                         "x"};
    EXPECT_EQ(collector.pieces, expected);
    Log::setPreStr("");
}
