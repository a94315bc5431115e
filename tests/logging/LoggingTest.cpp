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

// Keeps every line it is given.
class CollectingWriter : public LogWriter {
  public:
    void Write(std::vector<LogLine>& lines) override {
        written.insert(written.end(), lines.begin(), lines.end());
    }

    std::vector<std::string> Messages() const {
        std::vector<std::string> messages;
        for (const LogLine& line : written) messages.push_back(line.message);
        return messages;
    }

    std::vector<LogLine> written;
};

// The writer list and the line list are shared by every log of the process: each test
// starts and ends with both empty.
class LoggingTest : public ::testing::Test {
  protected:
    void SetUp() override { Reset(); }
    void TearDown() override { Reset(); }

    void Reset() {
        log.ClearWriters();
        log.ClearLog();
    }

    // A log that hands each finished line to the collector at once.
    void Connect() {
        log.AddWriter(&collector);
        log.LogStraightToStream(true);
    }

    Logging log{"tb"};
    CollectingWriter collector;
};

using Messages = std::vector<std::string>;

}  // namespace

TEST_F(LoggingTest, TextIsCutIntoLinesAtNewlines) {
    Connect();
    log << "piece";
    log << " and " << 42;
    EXPECT_TRUE(collector.written.empty());

    log << " more\nsecond\nthird";
    EXPECT_EQ(collector.Messages(), (Messages{"piece and 42 more", "second"}));

    log << std::string("\n") << 2.5 << " " << 7u << " " << 8ul << " " << -9ll << " " << 0.5f
        << "\n";
    EXPECT_EQ(collector.Messages(),
              (Messages{"piece and 42 more", "second", "third", "2.5 7 8 -9 0.5"}));
}

TEST_F(LoggingTest, LineCarriesItsFields) {
    const char* previous = std::getenv("USERNAME");
    std::string saved = previous == nullptr ? "" : previous;
    setenv("USERNAME", "tester", 1);
    Connect();
    log << "text, with comma\n";
    if (previous == nullptr) {
        unsetenv("USERNAME");
    } else {
        setenv("USERNAME", saved.c_str(), 1);
    }

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
    Connect();
    EXPECT_TRUE(log.IndentIncrease(3));
    log << "three\n";
    EXPECT_TRUE(log.IndentDecrease(1));
    log << "two\n";
    log.IndentIncrease(2);
    log.SetIndentCharStep('>');
    log.SetIndentCharFollow('.');
    log << "four\n";
    log.IndentIncrease(2);
    log << "six\n";
    EXPECT_EQ(collector.Messages(), (Messages{"|-|three", "|-two", "|.|>four", "|.|.|>six"}));

    log.IndentDecrease(4);
    ASSERT_EQ(log.GetIndent(), 2);
    EXPECT_FALSE(log.IndentDecrease(5));
    EXPECT_EQ(log.GetIndent(), 0);
}

TEST_F(LoggingTest, DisabledOrMutedLogTakesNothing) {
    Connect();
    log.SetOutput(false);
    EXPECT_FALSE(log.GetOutput());
    log << "muted\n";
    log.SetOutput(true);
    log.Disable();
    EXPECT_FALSE(log.GetOutput());
    log << "disabled\n";
    EXPECT_FALSE(log.IndentIncrease(1));
    EXPECT_FALSE(log.IndentDecrease(1));
    EXPECT_FALSE(log.ResetTime("t"));
    EXPECT_FALSE(log.PrintTime("t"));
    log.Enable();
    EXPECT_TRUE(log.GetOutput());
    EXPECT_TRUE(log.PrintTime("t"));
    log << "enabled\n";
    EXPECT_EQ(collector.Messages(), Messages{"enabled"});
}

// The writer list is shared: a writer added through one log gets every log's lines, and
// a writer listed twice would get each line twice.
TEST_F(LoggingTest, WriterIsListedOnceForAllLogs) {
    Connect();
    EXPECT_FALSE(log.AddWriter(&collector));
    EXPECT_FALSE(log.AddWriter(nullptr));
    Logging other("ot");
    EXPECT_FALSE(other.AddWriter(&collector));
    other.LogStraightToStream(true);
    other << "from other\n";
    log << "from tb\n";
    EXPECT_EQ(collector.Messages(), (Messages{"from other", "from tb"}));
}

TEST_F(LoggingTest, LinesWaitUntilToStream) {
    log.AddWriter(&collector);
    log << "one\n"
        << "two\n";
    EXPECT_TRUE(collector.written.empty());

    CollectingWriter given;
    log.ToStream(&given);
    EXPECT_EQ(given.Messages(), (Messages{"one", "two"}));
    EXPECT_TRUE(collector.written.empty());

    log << "three\n";
    log.ToStream(nullptr);
    log.ToStream(nullptr);
    EXPECT_EQ(collector.Messages(), Messages{"three"});

    log << "dropped\n";
    log.ClearLog();
    log.ToStream(nullptr);
    EXPECT_EQ(collector.Messages(), Messages{"three"});
}

// ClearLog takes the log's lock only when it is free, and never releases a lock that
// someone else holds.
TEST_F(LoggingTest, ClearLogWorksWhileLogIsHeld) {
    log.AddWriter(&collector);
    log << "waiting\n";
    ASSERT_TRUE(log.lock(true));
    log.ClearLog();
    EXPECT_TRUE(log.isLocked());
    log.unlock();
    log.ToStream(nullptr);
    EXPECT_TRUE(collector.written.empty());
}

TEST_F(LoggingTest, FinishLineEchoesToGivenStream) {
    Connect();
    std::ostringstream echo;
    log.IndentIncrease(2);
    log << "partial";
    log.FinishLine(&echo);
    log.FinishLine(nullptr);
    EXPECT_EQ(echo.str(), "|-partial\n");
    EXPECT_EQ(collector.Messages(), (Messages{"|-partial", "|-"}));
}

TEST_F(LoggingTest, PrintErrorNamesErrno) {
    Connect();
    log.PrintError(7);
    log.PrintError(13);
    log.PrintError(99999);
    errno = EACCES;
    log.PrintError();
    EXPECT_EQ(collector.Messages(),
              (Messages{"errno = E2BIG .. Argument list too long (POSIX.1)  ",
                        "errno = EACCES .. Permission denied (POSIX.1)  ", "errno = unknown",
                        "errno = EACCES .. Permission denied (POSIX.1)  "}));
}

TEST_F(LoggingTest, StreamWriterJoinsFieldsWithBars) {
    std::ostringstream out;
    LogToStream writer(out);
    log.AddWriter(&writer);
    log.LogStraightToStream(true);
    log << "a\nb\n";

    std::string expected;
    for (const char* message : {"a", "b"}) {
        expected += "\\|tb\\|" + std::to_string(getpid()) +
                    R"(\|\|[-0-9]+ [:0-9]+\.\d{3}\|\d+\|[^|]*\|)" + message;
    }
    EXPECT_TRUE(std::regex_match(out.str(), std::regex(expected))) << out.str();
}

// Writers are found by id while they exist; ClearAll deletes every one of them.
TEST(LogWriter, RegistryFollowsWriterLifetime) {
    auto* first = new CollectingWriter;
    auto* second = new CollectingWriter;
    int firstId = first->GetId();
    int secondId = second->GetId();
    EXPECT_NE(firstId, secondId);
    EXPECT_EQ(LogWriter::GETWRITER(firstId), first);
    EXPECT_EQ(LogWriter::GETWRITER(secondId), second);

    Logging log("rg");
    log.AddWriter(first);
    log.AddWriter(second);
    delete first;
    EXPECT_EQ(LogWriter::GETWRITER(firstId), nullptr);
    log.LogStraightToStream(true);
    log << "only the second listens\n";
    EXPECT_EQ(second->Messages(), Messages{"only the second listens"});

    LogWriter::ClearAll();
    EXPECT_EQ(LogWriter::GETWRITER(secondId), nullptr);
    log.ClearWriters();
}
