#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "logging/LogToStream.h"
#include "logging/LogWriter.h"
#include "logging/Logging.h"

namespace {

using Messages = std::vector<std::string>;

// Keeps every line it is given.
class CollectingWriter : public LogWriter {
public:
    void Write(std::vector<LogLine>& lines) override {
        written.insert(written.end(), lines.begin(), lines.end());
    }
    Messages Taken() const {
        Messages messages;
        for (const LogLine& line : written) messages.push_back(line.message);
        return messages;
    }
    std::vector<LogLine> written;
};

// The writer list and the line list are shared by every log of the process: each test
// starts and ends with both empty. `log` hands each finished line to `collector` at once.
class LoggingTest : public ::testing::Test {
protected:
    void SetUp() override {
        Reset();
        log.AddWriter(&collector);
        log.LogStraightToStream(true);
    }
    void TearDown() override { Reset(); }
    void Reset() {
        log.ClearWriters();
        log.ClearLog();
    }

    Logging log{"tb"};
    CollectingWriter collector;
};

}  // namespace

TEST_F(LoggingTest, TextIsCutIntoLinesAtNewlines) {
    log << "piece";
    log << " and " << 42;
    EXPECT_TRUE(collector.written.empty());
    log << " more\nsecond\nthird";
    EXPECT_EQ(collector.Taken(), (Messages{"piece and 42 more", "second"}));
    log << std::string("\n") << 2.5 << " " << 7u << " " << 8ul << " " << -9ll << " " << 0.5f
        << "\n";
    EXPECT_EQ(collector.Taken(),
              (Messages{"piece and 42 more", "second", "third", "2.5 7 8 -9 0.5"}));
}

TEST_F(LoggingTest, LineCarriesItsFields) {
    const char* previous = std::getenv("USERNAME");
    std::string saved = previous == nullptr ? "" : previous;
    setenv("USERNAME", "tester", 1);
    log << "text, with comma\n";
    previous == nullptr ? unsetenv("USERNAME") : setenv("USERNAME", saved.c_str(), 1);

    ASSERT_EQ(collector.written.size(), 1u);
    const LogLine& line = collector.written[0];
    EXPECT_EQ(line.logName, "tb");
    EXPECT_EQ(line.pId, getpid());
    EXPECT_EQ(line.procName, "");
    EXPECT_TRUE(
        std::regex_match(line.timeStamp, std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3})")))
        << line.timeStamp;
    EXPECT_GE(line.runTime, 0);
    EXPECT_EQ(line.user, "tester");
    EXPECT_EQ(line.message, "text, with comma");

    Logging unnamed(nullptr);
    unnamed.LogStraightToStream(true);
    unnamed << "x\n";
    unnamed.SetLogBaseName("renamed");
    unnamed << "y\n";
    ASSERT_EQ(collector.written.size(), 3u);
    EXPECT_EQ(collector.written[1].logName, " ");
    EXPECT_EQ(collector.written[2].logName, "renamed");
}

TEST_F(LoggingTest, IndentMarksDepth) {
    EXPECT_TRUE(log.IndentIncrease(3));
    log << "three\n";
    EXPECT_TRUE(log.IndentDecrease(1));
    log << "two\n";
    log.IndentIncrease(2);
    log.SetIndentCharStep('>');
    log.SetIndentCharFollow('.');
    log << "four\n";
    // A line finished by hand is echoed to the stream given.
    std::ostringstream echo;
    log << "again";
    log.FinishLine(&echo);
    EXPECT_EQ(echo.str(), "|.|>again\n");
    EXPECT_EQ(collector.Taken(), (Messages{"|-|three", "|-two", "|.|>four", "|.|>again"}));

    log.IndentDecrease(2);
    ASSERT_EQ(log.GetIndent(), 2);
    EXPECT_FALSE(log.IndentDecrease(5));
    EXPECT_EQ(log.GetIndent(), 0);
}

// A muted or disabled log takes no text; a disabled one also refuses indents and timing.
TEST_F(LoggingTest, DisabledOrMutedLogTakesNothing) {
    log.SetOutput(false);
    log << "muted\n";
    log.SetOutput(true);
    log.Disable();
    EXPECT_FALSE(log.GetOutput());
    log << "disabled\n";
    EXPECT_FALSE(log.IndentIncrease(1) || log.PrintTime("t"));
    log.Enable();
    log << "enabled\n";
    EXPECT_EQ(collector.Taken(), Messages{"enabled"});
}

// The writer list is shared: a writer added through one log gets every log's lines, and
// is listed only once.
TEST_F(LoggingTest, WriterIsListedOnceForAllLogs) {
    EXPECT_FALSE(log.AddWriter(&collector));
    EXPECT_FALSE(log.AddWriter(nullptr));
    Logging other("ot");
    EXPECT_FALSE(other.AddWriter(&collector));
    other.LogStraightToStream(true);
    other << "from other\n";
    log << "from tb\n";
    EXPECT_EQ(collector.Taken(), (Messages{"from other", "from tb"}));
}

// Without LogStraightToStream lines wait for ToStream; ClearLog drops them, also while
// someone holds the log, whose lock it leaves alone.
TEST_F(LoggingTest, LinesWaitUntilToStream) {
    log.LogStraightToStream(false);
    log << "one\ntwo\n";
    EXPECT_TRUE(collector.written.empty());
    CollectingWriter given;
    log.ToStream(&given);
    EXPECT_EQ(given.Taken(), (Messages{"one", "two"}));

    log << "three\n";
    log.ToStream(nullptr);
    log.ToStream(nullptr);
    EXPECT_EQ(collector.Taken(), Messages{"three"});

    log << "dropped\n";
    ASSERT_TRUE(log.lock(true));
    log.ClearLog();
    EXPECT_TRUE(log.isLocked());
    log.unlock();
    log.ToStream(nullptr);
    EXPECT_EQ(collector.Taken(), Messages{"three"});
}

TEST_F(LoggingTest, PrintErrorNamesErrno) {
    log.PrintError(7);
    log.PrintError(99999);
    errno = EACCES;
    log.PrintError();
    EXPECT_EQ(collector.Taken(),
              (Messages{"errno = E2BIG .. Argument list too long (POSIX.1)  ", "errno = unknown",
                        "errno = EACCES .. Permission denied (POSIX.1)  "}));
}

TEST_F(LoggingTest, StreamWriterJoinsFieldsWithBars) {
    log.ClearWriters();
    std::ostringstream out;
    LogToStream writer(out);
    log.AddWriter(&writer);
    log << "a\nb\n";
    std::string expected;
    for (const char* message : {"a", "b"}) {
        expected += "\\|tb\\|" + std::to_string(getpid()) +
                    R"(\|\|[-0-9]+ [:0-9]+\.\d{3}\|\d+\|[^|]*\|)" + message;
    }
    EXPECT_TRUE(std::regex_match(out.str(), std::regex(expected))) << out.str();
}

// Writers are found by id while they exist, and a log skips one that is gone; ClearAll
// deletes every one of them.
TEST(LogWriter, RegistryFollowsWriterLifetime) {
    auto* first = new CollectingWriter;
    auto* second = new CollectingWriter;
    int firstId = first->GetId(), secondId = second->GetId();
    EXPECT_EQ(LogWriter::GETWRITER(firstId), first);
    Logging log("rg");
    log.AddWriter(first);
    log.AddWriter(second);
    delete first;
    EXPECT_EQ(LogWriter::GETWRITER(firstId), nullptr);
    log.LogStraightToStream(true);
    log << "only the second listens\n";
    EXPECT_EQ(second->Taken(), Messages{"only the second listens"});
    LogWriter::ClearAll();
    EXPECT_EQ(LogWriter::GETWRITER(secondId), nullptr);
    log.ClearWriters();
}
