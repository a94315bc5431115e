#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "server/SocketIO.h"
#include "support/LogCapture.h"

namespace {

const SendReport testReport{"first failed\n", "second failed\n", true};

// A 4-byte length as it goes on the wire.
std::string Length(int32_t length) { return std::string(reinterpret_cast<char*>(&length), 4); }

// A connected pair of stream sockets: what is written to one end is read from the other.
// Reads give up after 30 milliseconds of silence.
class SocketPair {
public:
    SocketPair() {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        timeval timeout{0, 30000};
        setsockopt(reader, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
    }
    ~SocketPair() {
        CloseWriter();
        close(reader);
    }
    void Write(const std::string& bytes) {
        EXPECT_EQ(write(writer, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    void CloseWriter() {
        if (writer != -1) close(writer);
        writer = -1;
    }

    int ends[2] = {-1, -1};
    int& writer = ends[0];
    int& reader = ends[1];
};

}  // namespace

TEST(SocketIO, FramingEdgeCases) {
    struct Case {
        const char* what;
        std::string bytes;
        bool closeAfter;
        std::vector<FrameStatus> expected;
    };
    const std::string after = Length(8) + "<after/>";
    const std::vector<Case> cases = {
        {"zero length", Length(0) + after, false, {FrameStatus::empty, FrameStatus::received}},
        {"negative length", Length(-7) + after, false, {FrameStatus::empty, FrameStatus::received}},
        {"huge length", Length(maxFrameLength + 1), false, {FrameStatus::broken}},
        {"closed mid-body",
         Length(100) + "<only part",
         true,
         {FrameStatus::broken, FrameStatus::closed}},
        {"end of stream", "", true, {FrameStatus::closed}},
        {"time-out", "", false, {FrameStatus::nothing}},
    };
    LogCapture capture;
    for (const Case& c : cases) {
        SocketPair pair;
        pair.Write(c.bytes);
        if (c.closeAfter) pair.CloseWriter();
        for (FrameStatus expected : c.expected) {
            std::string text;
            EXPECT_EQ(ReceiveFrame(pair.reader, text), expected) << c.what;
            EXPECT_EQ(text, expected == FrameStatus::received ? "<after/>" : "") << c.what;
        }
    }
    EXPECT_TRUE(capture.Contains("exceeds the limit"));
}

// Texts above 500 bytes log each turn of the loops; the ends log from one thread here,
// so that their lines do not interleave.
TEST(SocketIO, TextsCrossIntactAndLongOnesLogTheirProgress) {
    SocketPair pair;
    LogCapture capture;
    std::string text;
    for (int length : {500, 100000}) {
        ASSERT_TRUE(SendFrame(pair.writer, std::string(length, 'y').c_str(), testReport));
        ASSERT_EQ(ReceiveFrame(pair.reader, text, true), FrameStatus::received);
        EXPECT_EQ(text, std::string(length, 'y'));
        EXPECT_EQ(capture.Contains("total"), length > 500);
    }
    EXPECT_TRUE(capture.Contains("Sent 100000 remaining 0 total 100000\n"));
    EXPECT_TRUE(capture.Contains("] received 100000 remaining 0 total 100000\n"));

    // Far more than the socket buffers hold: both ends work in pieces.
    std::string big(3 * 1024 * 1024, 'x');
    for (size_t i = 0; i < big.size(); i += 4099) big[i] = static_cast<char>('a' + i % 26);
    std::thread sender([&] { EXPECT_TRUE(SendFrame(pair.writer, big.c_str(), {"", ""})); });
    EXPECT_EQ(ReceiveFrame(pair.reader, text), FrameStatus::received);
    sender.join();
    EXPECT_TRUE(text == big);
}

TEST(SocketIO, LengthArrivingInPiecesIsReadWhole) {
    SocketPair pair;
    pair.Write(Length(5).substr(0, 2));
    std::thread rest([&] {
        usleep(20000);
        pair.Write(Length(5).substr(2) + "<ok/>");
    });
    std::string text;
    EXPECT_EQ(ReceiveFrame(pair.reader, text), FrameStatus::received);
    rest.join();
    EXPECT_EQ(text, "<ok/>");
}

TEST(SocketIO, FailedSendsReportWithoutSignal) {
    LogCapture capture;
    EXPECT_FALSE(SendFrame(-1, "<x/>", testReport));
    EXPECT_TRUE(capture.Contains("first failed\n"));
    EXPECT_TRUE(capture.Contains("error = WSAEBADF, (10009)\n"));

    // Sending into a connection shut for writing fails with EPIPE; no SIGPIPE ends us.
    capture.Clear();
    SocketPair pair;
    shutdown(pair.writer, SHUT_WR);
    EXPECT_FALSE(SendFrame(pair.writer, "<x/>", testReport));
    EXPECT_TRUE(capture.Contains("first failed\n"));
    EXPECT_TRUE(capture.Contains("error = WSAESHUTDOWN, (10058)\n"));
}

TEST(LogWinError, LogsWinsockWordingOrUnknown) {
    Log::setPreStr("");
    LogCapture capture;
    errno = ECONNRESET;
    LogWinError();
    EXPECT_EQ(capture.Text(),
              "[, ERR] error = WSAECONNRESET, (10054)\n"
              "[, ERR] desc1: Connection reset by peer.\n"
              "[, ERR] desc2:     An existing connection was forcibly closed by the remote "
              "host. This normally results if the peer application on the remote host is "
              "suddenly stopped, the host is rebooted, the host or remote network interface is "
              "disabled, or the remote host uses a hard close (see setsockopt for more "
              "information on the SO_LINGER option on the remote socket).\n");

    for (int unmapped : {0, EAGAIN, ETIMEDOUT, ENOENT}) {
        capture.Clear();
        errno = unmapped;
        LogWinError();
        EXPECT_EQ(capture.Text(), "[, ERR] error unknown\n") << unmapped;
    }
}
