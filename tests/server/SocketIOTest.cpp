#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <thread>

#include "server/ClientServerMessage.h"
#include "server/SocketIO.h"
#include "support/LogCapture.h"

namespace {

const SendReport testReport{"first failed\n", "second failed\n", true};

// A connected pair of stream sockets: what is written to one end is read from the other.
class SocketPair : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0); }
    void TearDown() override {
        CloseWriter();
        close(ends[1]);
    }

    void CloseWriter() {
        if (ends[0] != -1) close(ends[0]);
        ends[0] = -1;
    }

    void WriteLength(int32_t length) { ASSERT_EQ(write(ends[0], &length, 4), 4); }

    void WriteText(const std::string& text) {
        ASSERT_EQ(write(ends[0], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    void SetReadTimeout(int milliseconds) {
        timeval timeout{0, milliseconds * 1000};
        setsockopt(ends[1], SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
    }

    int writer() const { return ends[0]; }
    int reader() const { return ends[1]; }

    int ends[2] = {-1, -1};
};

}  // namespace

TEST_F(SocketPair, MessageCrossesIntactAndStaysInStep) {
    ClientServerMessage message;
    message.SetType(MSGTYPE_GETREPLY);
    message.SetMsg(MSG_VERSION);
    message.SetMsg("beta");
    std::string sent;
    message.ToString(sent);
    ASSERT_TRUE(SendFrame(writer(), sent.c_str(), testReport));
    ASSERT_TRUE(SendFrame(writer(), "<second/>", testReport));

    std::string text;
    ASSERT_EQ(ReceiveFrame(reader(), text), FrameStatus::received);
    EXPECT_EQ(text, sent);
    ClientServerMessage copy;
    EXPECT_TRUE(copy.FromString(text));
    EXPECT_TRUE(copy.TestMsg(std::string("beta")));
    ASSERT_EQ(ReceiveFrame(reader(), text), FrameStatus::received);
    EXPECT_EQ(text, "<second/>");
}

TEST_F(SocketPair, LongTextCrossesWhileBeingRead) {
    std::string big(3 * 1024 * 1024, 'x');
    for (size_t i = 0; i < big.size(); i += 4099) big[i] = static_cast<char>('a' + i % 26);
    std::thread sender([&] { EXPECT_TRUE(SendFrame(writer(), big.c_str(), testReport)); });
    std::string text;
    EXPECT_EQ(ReceiveFrame(reader(), text, true), FrameStatus::received);
    sender.join();
    EXPECT_TRUE(text == big);
}

TEST_F(SocketPair, TextsAbove500BytesLogTheirProgress) {
    LogCapture capture;
    ASSERT_TRUE(SendFrame(writer(), std::string(500, 'y').c_str(), testReport));
    std::string text;
    ASSERT_EQ(ReceiveFrame(reader(), text, true), FrameStatus::received);
    EXPECT_EQ(capture.Text().find("total"), std::string::npos);

    std::string longer(100000, 'z');
    ASSERT_TRUE(SendFrame(writer(), longer.c_str(), testReport));
    EXPECT_TRUE(capture.Contains("Sent 100000 remaining 0 total 100000\n"));
    ASSERT_EQ(ReceiveFrame(reader(), text, true), FrameStatus::received);
    EXPECT_TRUE(capture.Contains(" remaining 0 total 100000\n"));
    EXPECT_TRUE(capture.Contains("] received "));
}

TEST_F(SocketPair, ZeroAndNegativeLengthsReadNothing) {
    WriteLength(0);
    WriteLength(-7);
    WriteText("");
    ASSERT_TRUE(SendFrame(writer(), "<after/>", testReport));
    std::string text;
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::empty);
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::empty);
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::received);
    EXPECT_EQ(text, "<after/>");
}

TEST_F(SocketPair, HugeLengthIsRefused) {
    LogCapture capture;
    WriteLength(maxFrameLength + 1);
    std::string text;
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::broken);
    EXPECT_TRUE(capture.Contains("exceeds the limit"));
    EXPECT_TRUE(text.empty());
}

TEST_F(SocketPair, PeerClosingMidBodyBreaksTheFrame) {
    WriteLength(100);
    WriteText("<only part");
    CloseWriter();
    std::string text;
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::broken);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::closed);
}

TEST_F(SocketPair, EndOfStreamAndSilenceAreTold) {
    SetReadTimeout(30);
    std::string text;
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::nothing);

    // A length that arrives in pieces is still read whole.
    WriteText(std::string("\x05\x00", 2));
    std::thread rest([&] {
        usleep(20000);
        WriteText(std::string("\x00\x00", 2) + "<ok/>");
    });
    int32_t length = 0;
    bool peerClosed = true;
    EXPECT_TRUE(socketReceive(reader(), reinterpret_cast<char*>(&length), 4, &peerClosed));
    rest.join();
    EXPECT_EQ(length, 5);
    EXPECT_FALSE(peerClosed);
    char body[5];
    EXPECT_TRUE(socketReceive(reader(), body, 5));

    CloseWriter();
    EXPECT_FALSE(socketReceive(reader(), body, 4, &peerClosed));
    EXPECT_TRUE(peerClosed);
    EXPECT_EQ(ReceiveFrame(reader(), text), FrameStatus::closed);
}

TEST_F(SocketPair, BadXmlArrivesButDoesNotParse) {
    ASSERT_TRUE(SendFrame(writer(), "<a><b></a>", testReport));
    std::string text;
    ASSERT_EQ(ReceiveFrame(reader(), text), FrameStatus::received);
    ClientServerMessage message;
    EXPECT_FALSE(message.FromString(text));
}

TEST_F(SocketPair, FailedSendsReportWithoutSignal) {
    LogCapture capture;
    EXPECT_FALSE(SendFrame(-1, "<x/>", testReport));
    EXPECT_TRUE(capture.Contains("first failed\n"));
    EXPECT_TRUE(capture.Contains("error = WSAEBADF, (10009)\n"));

    // Sending into a connection shut for writing fails with EPIPE; no SIGPIPE ends us.
    capture.Clear();
    shutdown(writer(), SHUT_WR);
    EXPECT_FALSE(SendFrame(writer(), "<x/>", testReport));
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
