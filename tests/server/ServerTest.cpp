#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "server/ClientServerMessage.h"
#include "support/RawClient.h"
#include "support/ServerProcess.h"
#include "support/WaitUntil.h"
#include "system/SystemToXML.h"

namespace {

constexpr double replyWait = 5.0;

// Asks for the version and expects "beta" back.
void ExpectVersionReply(RawClient& client) {
    ASSERT_TRUE(client.Send(MSGTYPE_GET, MSG_VERSION));
    ClientServerMessage reply;
    ASSERT_TRUE(client.ReadMessage(reply, replyWait));
    EXPECT_TRUE(reply.TestType(MSGTYPE_GETREPLY));
    EXPECT_TRUE(reply.TestMsg(MSG_VERSION));
    EXPECT_TRUE(reply.TestMsg(std::string("beta")));
}

e_System_* SampleSystem() {
    e_System_* system = NewSystemIndoor(nullptr);
    system->xMax = 20;
    e_Barrier_* wall = NewBarrier(system);
    wall->height_upper = 3;
    wall->vectors = NewVectorXYZ(0, 0, 0);
    wall->vectors->next = NewVectorXYZ(10, 0, 0);
    SetVecXYZ(&NewAccessPoint(system, "ap <one> & \"two\"")->location, 5, 5, 2);
    SetVecLLH(&NewSamplePoint(system, "sp1")->location, 13.405, 52.52, 1.5);
    return system;
}

// Each test's server must end cleanly on a shutdown message once the test's clients are
// gone, closing the connection and exiting with 0; under the sanitizers that also means
// it leaked nothing.
class Server : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(server.Start()); }
    void TearDown() override {
        if (!server.Running()) return;
        RawClient closer;
        ASSERT_TRUE(closer.Connect(server.port));
        ASSERT_TRUE(closer.Send(MSGTYPE_CONTROL, MSG_SHUTDOWN));
        EXPECT_TRUE(closer.ClosedByPeer(replyWait));
        EXPECT_EQ(server.WaitExit(10), 0) << server.Stderr();
    }
    ServerProcess server;
};

}  // namespace

TEST_F(Server, AnswersQueriesKeepsSettingsAndLogsToCsv) {
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));
    ExpectVersionReply(client);

    // A status poll before any run gets no message at all; nor do the unhandled GETs.
    ASSERT_TRUE(client.Send(MSGTYPE_STATUSQUERY, MSG_NONE));
    ASSERT_TRUE(client.Send(MSGTYPE_GET, MSG_ERRORLOG));
    ASSERT_TRUE(client.Send(MSGTYPE_GET, MSG_LASTERROR));
    EXPECT_FALSE(client.ReadFrame(0.6));

    ClientServerMessage set;
    set.SetType(MSGTYPE_SET);
    set.SetMsg(MSG_DATALOCATION);
    set.SetMsg(std::string("/data/<site> & more"));
    ASSERT_TRUE(client.SendMessage(set));
    // Every catalogue request is answered with the same code.
    for (eMsg code : {MSG_DATALOCATION, MSG_MATERIALNAMES, MSG_MATERIALDESC, MSG_APNAMES,
                      MSG_APDESC, MSG_APDETAILS, MSG_ANTNAMES, MSG_ANTDESC, MSG_ANTDETAILS}) {
        ASSERT_TRUE(client.Send(MSGTYPE_GET, code));
        ClientServerMessage reply;
        ASSERT_TRUE(client.ReadMessage(reply, replyWait)) << code;
        EXPECT_TRUE(reply.TestType(MSGTYPE_GETREPLY));
        EXPECT_TRUE(reply.TestMsg(code));
        if (code == MSG_DATALOCATION) {
            EXPECT_TRUE(reply.TestMsg("/data/<site> & more"));
        }
    }

    // Idle polls log their time-out as an unknown error.
    std::string log = server.ReadFile("server_0.csv");
    EXPECT_EQ(log.rfind("logName,pId,procName,timeStamp,runTime,user,'message'\n", 0), 0u);
    EXPECT_NE(log.find(",'[SERVER, INF] server sending msg: '\n"), std::string::npos);
    EXPECT_NE(log.find("error unknown"), std::string::npos);
}

namespace {

// The material catalogue: name, then a, b, permeability, c and d as a stream writes them.
struct CatalogueMedium {
    const char* name;
    const char* numbers[5];
};

const CatalogueMedium catalogue[] = {
    {"Vacuum/ air", {"1", "0", "1", "0", "0"}},
    {"Concrete (ITU)", {"5.31", "0", "1", "0.0326", "0.8095"}},
    {"Brick (ITU)", {"3.75", "0", "1", "0.038", "0"}},
    {"Plasterboard (ITU)", {"2.94", "0", "1", "0.0116", "0.7076"}},
    {"Wood (ITU)", {"1.99", "0", "1", "0.0047", "1.0718"}},
    {"Glass (ITU)", {"6.27", "0", "1", "0.0043", "1.1925"}},
    {"Ceiling board (ITU)", {"1.5", "0", "1", "0.0005", "1.1634"}},
    {"Chipboard (ITU)", {"2.58", "0", "1", "0.0217", "0.78"}},
    {"Floorboard (ITU)", {"3.66", "0", "1", "0.0044", "1.3515"}},
    {"Metal (ITU)", {"1", "0", "1", "1e+07", "0"}},
    {"Very dry ground (ITU)", {"3", "0", "1", "0.00015", "2.52"}},
    {"Medium dry ground (ITU)", {"15", "-0.1", "1", "0.035", "1.63"}},
    {"Wet ground (ITU)", {"30", "-0.4", "1", "0.15", "1.3"}},
};

std::vector<std::string> AskList(RawClient& client, eMsg code) {
    std::vector<std::string> list;
    EXPECT_TRUE(client.Send(MSGTYPE_GET, code));
    ClientServerMessage reply;
    EXPECT_TRUE(client.ReadMessage(reply, replyWait));
    EXPECT_TRUE(reply.TestMsg(code));
    EXPECT_TRUE(reply.GetMsg(list));
    return list;
}

}  // namespace

TEST_F(Server, ListsTheThirteenMaterialsWithTheirItuNumbers) {
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));
    std::vector<std::string> names;
    std::vector<std::string> texts;
    for (const CatalogueMedium& medium : catalogue) {
        const char* const* n = medium.numbers;
        names.push_back(medium.name);
        texts.push_back(std::string("material ") + medium.name +
                        " details from ITU documentation: \nralative permittivity a = " + n[0] +
                        " , b =" + n[1] + "\nralative permeability a = " + n[2] +
                        "\ncondictivity c = " + n[3] + " , d =" + n[4] + "\n");
    }
    EXPECT_EQ(AskList(client, MSG_MATERIALNAMES), names);
    EXPECT_EQ(AskList(client, MSG_MATERIALDESC), texts);
    // A second request of the same connection finds the same thirteen.
    EXPECT_EQ(AskList(client, MSG_MATERIALNAMES), names);
}

TEST_F(Server, BouncesTheSystemBackUnchangedAfterASecondTwice) {
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));
    e_System_* original = SampleSystem();
    std::string originalText;
    SystemToString(original, originalText);
    DeleteSystem(&original);

    for (int round = 0; round < 2; ++round) {
        ClientServerMessage bounce;
        bounce.SetType(MSGTYPE_CONTROL);
        bounce.SetMsg(MSG_BOUNCESYSTEM);
        bounce.SetMsg(SampleSystem());
        auto sent = std::chrono::steady_clock::now();
        ASSERT_TRUE(client.SendMessage(bounce));
        ClientServerMessage reply;
        ASSERT_TRUE(client.ReadMessage(reply, replyWait));
        EXPECT_GE(std::chrono::steady_clock::now() - sent, std::chrono::milliseconds(900));
        EXPECT_TRUE(reply.TestType(MSGTYPE_CONTROL));
        EXPECT_TRUE(reply.TestMsg(MSG_SYSTEMRESULT));
        e_System_* returned = nullptr;
        ASSERT_TRUE(reply.GetMsg(&returned));
        std::string returnedText;
        SystemToString(returned, returnedText);
        EXPECT_EQ(returnedText, originalText);
        DeleteSystem(&returned);
    }
    ExpectVersionReply(client);
}

TEST_F(Server, ServesOneClientAtATimeUntilItLeaves) {
    RawClient first, second, third;
    ASSERT_TRUE(first.Connect(server.port));
    ExpectVersionReply(first);

    // The second connects at TCP level but is not served while the first stays.
    ASSERT_TRUE(second.Connect(server.port));
    ASSERT_TRUE(second.Send(MSGTYPE_GET, MSG_VERSION));
    EXPECT_FALSE(second.ReadFrame(0.6));

    // A disconnect message: the server closes the first and serves the waiting second.
    ASSERT_TRUE(first.Send(MSGTYPE_CONTROL, MSG_DISCONNECT));
    EXPECT_TRUE(first.ClosedByPeer(replyWait));
    ClientServerMessage reply;
    ASSERT_TRUE(second.ReadMessage(reply, replyWait));
    EXPECT_TRUE(reply.TestMsg(std::string("beta")));

    // A client that simply vanishes is noticed as well.
    ASSERT_TRUE(third.Connect(server.port));
    ASSERT_TRUE(third.Send(MSGTYPE_GET, MSG_VERSION));
    second.Close();
    ASSERT_TRUE(third.ReadMessage(reply, replyWait));
    EXPECT_TRUE(reply.TestMsg(std::string("beta")));
}

TEST_F(Server, BadInputNeverTakesTheServerDown) {
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));

    // Dropped, connection kept: bad XML, a length of 0, a negative length, type 0.
    ASSERT_TRUE(client.SendFrame("<libFenwaveMessage type=\"5\" msg=\"15\""));
    ASSERT_TRUE(client.SendFrame("not xml at all"));
    ASSERT_TRUE(client.SendLength(0));
    ASSERT_TRUE(client.SendLength(-7));
    ASSERT_TRUE(client.SendFrame("<libFenwaveMessage type=\"0\" msg=\"15\" string=\"\"/>"));
    ASSERT_TRUE(client.SendFrame("<other/>"));
    // A root of another name is still read.
    ASSERT_TRUE(client.SendFrame("<anything type=\"5\" msg=\"15\"/>"));
    ClientServerMessage reply;
    ASSERT_TRUE(client.ReadMessage(reply, replyWait));
    EXPECT_TRUE(reply.TestMsg(std::string("beta")));

    // A length beyond any message closes the connection without allocating it.
    ASSERT_TRUE(client.SendLength(0x7fffffff));
    EXPECT_TRUE(client.ClosedByPeer(replyWait));

    // A peer that closes in the middle of a body, then one that sends random bytes.
    ASSERT_TRUE(client.Connect(server.port));
    ASSERT_TRUE(client.SendLength(1000));
    ASSERT_TRUE(client.SendBytes("<libFenwave", 11));
    ASSERT_TRUE(client.Connect(server.port));
    std::vector<unsigned char> noise(4096);
    unsigned state = 12345;
    for (unsigned char& byte : noise) byte = (state = state * 1103515245u + 12345u) >> 16;
    ASSERT_TRUE(client.SendBytes(noise.data(), noise.size()));
    client.Close();

    RawClient next;
    ASSERT_TRUE(next.Connect(server.port));
    ExpectVersionReply(next);
}

TEST(ServerProgram, HelpAndBadOptionsExitWithMinusOneAfterTheHelpText) {
    const std::string help =
        "----------------------------------------------------------------------------------:\n"
        "valid command line options are:\n"
        "-h          : show this help message\n"
        "-p<number>  : set the port number to communicate messages to server, \n"
        "              eg add -p12001 to communicate on port 12001\n"
        "-o          : set the output level of this program\n"
        "              eg: -o0 to output nothing\n"
        "                  -o1 to output error messages only\n"
        "                  -o2 to output errors and warnings\n"
        "                  -o3 to output errors, warnings and debug messages \n"
        "                  -o4 to output errors, warnings, debug and informative messages \n"
        "-l<logfile> : set the name of a file to log output to \n"
        "-x          : print a message if an exception is caught. \n"
        "              By default, the exception will be caught silently, and program will "
        "exit.\n"
        "              eg: -x0 to not catch exceptions at all.\n"
        "              eg: -x1 (or -x) to catch exceptions silently and exit.\n"
        "              eg: -x2 to catch exceptions, print an error message to screen and exit.\n";
    ServerProcess helped;
    ASSERT_TRUE(helped.StartRaw({"-lrun.log", "-h"}));
    EXPECT_EQ(helped.WaitExit(10), 255);
    EXPECT_EQ(helped.Stdout(), help);
    EXPECT_TRUE(std::filesystem::exists(helped.directory.File("run.log")));

    // Every argument is visited, the help printed once after the complaints.
    ServerProcess unknown;
    ASSERT_TRUE(unknown.StartRaw({"-q", "plain", "-h"}));
    EXPECT_EQ(unknown.WaitExit(10), 255);
    EXPECT_EQ(unknown.Stdout(),
              "unknown command line option: -q\nunknown command line option: plain\n" + help);
}

TEST(ServerProgram, PortInUseEndsWithExitCodeZeroAndTheBindMessage) {
    ServerProcess first, second;
    ASSERT_TRUE(first.Start());
    ASSERT_TRUE(second.StartRaw({"-p" + std::to_string(first.port)}));
    EXPECT_EQ(second.WaitExit(10), 0);
    std::string log = second.ReadFile("server_0.csv");
    EXPECT_NE(log.find("bind() failed: Address already in use"), std::string::npos);
    EXPECT_NE(log.find("ListenForClient() on port " + std::to_string(first.port) + " failed"),
              std::string::npos);
}

// At output level 0 no CSV log is written; a termination signal ends the loop cleanly.
TEST(ServerProgram, QuietServerEndsOnATerminationSignal) {
    ServerProcess server;
    ASSERT_TRUE(server.Start({"-o"}));
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));
    ExpectVersionReply(client);
    kill(server.pid, SIGTERM);
    EXPECT_EQ(server.WaitExit(10), 0);
    EXPECT_EQ(server.Stderr(), "signalHandler() caught signal SIGTERM, exiting\n");
    EXPECT_FALSE(std::filesystem::exists(server.directory.File("server_0.csv")));
}

TEST(ServerProgram, MultiProcessModeRelaysThroughAChildServer) {
    ServerProcess parent;
    ASSERT_TRUE(parent.Start({"-m"}));
    RawClient client;
    ASSERT_TRUE(client.Connect(parent.port));
    // The relay waits on its child after each message; both go out at once.
    ASSERT_TRUE(client.Send(MSGTYPE_GET, MSG_VERSION));
    ASSERT_TRUE(client.Send(MSGTYPE_CONTROL, MSG_SHUTDOWN));
    ClientServerMessage reply;
    ASSERT_TRUE(client.ReadMessage(reply, replyWait));
    EXPECT_TRUE(reply.TestMsg(std::string("beta")));
    // The child took the shutdown and left its port.
    EXPECT_TRUE(WaitUntil([&] { return !ServerProcess::PortListening(parent.port + 1); }));
    EXPECT_TRUE(parent.Running());
}
