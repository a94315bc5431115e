#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "server/ClientServerMessage.h"
#include "support/LogCapture.h"
#include "system/SystemToXML.h"

namespace {

const std::string awkward = "a<b>&c\"d'e  f";

// Writes `message` to text and reads it into a fresh message.
std::string Carry(const ClientServerMessage& message, ClientServerMessage& copy) {
    std::string text;
    EXPECT_TRUE(message.ToString(text));
    EXPECT_TRUE(copy.FromString(text));
    return text;
}

}  // namespace

TEST(ClientServerMessage, EnvelopeHasOnlyWhatIsSet) {
    ClientServerMessage message;
    std::string text;
    message.ToString(text);
    EXPECT_EQ(text, "<libFenwaveMessage type=\"0\" msg=\"0\" string=\"\"/>\n");

    message.SetType(MSGTYPE_GETREPLY);
    message.SetMsg(MSG_MATERIALNAMES);
    message.SetMsg(std::vector<std::string>{"one", "two"});
    message.ToString(text);
    EXPECT_EQ(text,
              "<libFenwaveMessage type=\"6\" msg=\"17\" string=\"\">\n"
              "    <stringList>\n"
              "        <string val=\"one\"/>\n"
              "        <string val=\"two\"/>\n"
              "    </stringList>\n"
              "</libFenwaveMessage>\n");

    message.SetMsg(std::vector<std::string>{});
    message.ToString(text);
    EXPECT_EQ(text.find("stringList"), std::string::npos);
    EXPECT_EQ(text.find("System_"), std::string::npos);
}

TEST(ClientServerMessage, EscapedTextSurvivesStringAndList) {
    ClientServerMessage message;
    message.SetType(MSGTYPE_SET);
    message.SetMsg(MSG_DATALOCATION);
    message.SetMsg(awkward);
    message.SetMsg(std::vector<std::string>{awkward, "", "plain"});

    ClientServerMessage copy;
    std::string text = Carry(message, copy);
    EXPECT_NE(text.find("&lt;"), std::string::npos);
    EXPECT_TRUE(copy.TestType(MSGTYPE_SET));
    EXPECT_TRUE(copy.TestMsg(MSG_DATALOCATION));
    EXPECT_TRUE(copy.TestMsg(awkward));
    std::vector<std::string> list;
    EXPECT_TRUE(copy.GetMsg(list));
    EXPECT_EQ(list, (std::vector<std::string>{awkward, "", "plain"}));
}

TEST(ClientServerMessage, ParsingIsLenientAboutWhatIsMissing) {
    ClientServerMessage message;
    EXPECT_TRUE(message.FromString("<anyName string=\"hello\"/>"));
    eMsgType type = MSGTYPE_ERROR;
    eMsg msg = MSG_READY;
    message.GetType(type);
    message.GetMsg(msg);
    EXPECT_EQ(type, MSGTYPE_NONE);
    EXPECT_EQ(msg, MSG_NONE);
    EXPECT_TRUE(message.TestMsg(std::string("hello")));

    // Fields keep their values where attributes are missing or malformed; the list grows.
    EXPECT_TRUE(
        message.FromString("<x type=\"abc\" msg=\"32\"><stringList><string val=\"a\"/><string/>"
                           "<string val=\"b\"/></stringList></x>"));
    EXPECT_TRUE(message.TestType(MSGTYPE_NONE));
    EXPECT_TRUE(message.TestMsg(MSG_READY));
    EXPECT_TRUE(message.TestMsg(std::string("hello")));
    EXPECT_TRUE(message.FromString("<x><stringList><string val=\"c\"/></stringList></x>"));
    std::vector<std::string> list;
    message.GetMsg(list);
    EXPECT_EQ(list, (std::vector<std::string>{"a", "b", "c"}));

    message.Reset();
    EXPECT_TRUE(message.TestMsg(std::string("")));
    message.GetMsg(list);
    EXPECT_TRUE(list.empty());
}

TEST(ClientServerMessage, BadTextIsRefusedWithItsReason) {
    LogCapture capture;
    ClientServerMessage message;
    EXPECT_FALSE(message.FromString("<a><b></a>"));
    EXPECT_TRUE(capture.Contains("ClientServerMessage::FromString() - parse xml failed"));
    EXPECT_FALSE(message.FromString(""));
    capture.Clear();
    EXPECT_FALSE(message.FromString("<!-- only a comment -->"));
    EXPECT_TRUE(capture.Contains("ClientServerMessage::FromString() - no root element\n"));
    EXPECT_TRUE(capture.Contains("ClientServerMessage::FromString() - enter\n"));
}

TEST(ClientServerMessage, BooleansAreTheExactWords) {
    ClientServerMessage message;
    bool value = true;
    message.SetMsg(false);
    EXPECT_TRUE(message.TestMsg(std::string("false")));
    EXPECT_TRUE(message.GetMsg(value));
    EXPECT_FALSE(value);

    message.SetMsg("TRUE");
    EXPECT_FALSE(message.GetMsg(value));
    EXPECT_FALSE(value);
    message.SetMsg("true");
    EXPECT_TRUE(message.GetMsg(value));
    EXPECT_TRUE(value);
}

TEST(ClientServerMessage, SystemPayloadTravelsAndIsHandedOver) {
    e_System_* system = NewSystemIndoor(nullptr);
    system->xMax = 12.5;
    system->traceLimit = 7;
    e_AccessPoint_* accessPoint = NewAccessPoint(system, "ap<1>");
    SetVecXYZ(&accessPoint->location, 1, 2, 3);
    e_SamplePoint_* samplePoint = NewSamplePoint(system, "sp1");
    e_ReceivedSignal_* signal = NewReceivedSignal(samplePoint, "ap<1>");
    signal->receivedPower_dBm = -42.25;
    signal->receivedPathCount = 3;

    ClientServerMessage message;
    message.SetType(MSGTYPE_CONTROL);
    message.SetMsg(MSG_SYSTEMRESULT);
    message.SetMsg(system);
    ClientServerMessage copy;
    std::string text = Carry(message, copy);
    EXPECT_NE(text.find("<System_"), std::string::npos);

    e_System_* received = nullptr;
    ASSERT_TRUE(copy.GetMsg(&received));
    ASSERT_NE(received, nullptr);
    EXPECT_DOUBLE_EQ(received->xMax, 12.5);
    EXPECT_EQ(received->traceLimit, 7);
    ASSERT_NE(received->accessPoints, nullptr);
    EXPECT_STREQ(received->accessPoints->name, "ap<1>");
    EXPECT_DOUBLE_EQ(received->accessPoints->location.z, 3);
    ASSERT_NE(received->samplePoints, nullptr);
    ASSERT_NE(received->samplePoints->signals, nullptr);
    EXPECT_DOUBLE_EQ(received->samplePoints->signals->receivedPower_dBm, -42.25);
    EXPECT_EQ(received->samplePoints->signals->receivedPathCount, 3);

    LogCapture capture;
    e_System_* again = nullptr;
    EXPECT_FALSE(copy.GetMsg(&again));
    EXPECT_EQ(again, nullptr);
    EXPECT_TRUE(
        capture.Contains("ClientServerMessage::GetMsg() - get system from message failed\n"));
    DeleteSystem(&received);
}

TEST(ClientServerMessage, HeldSystemIsNotReleased) {
    e_System_* system = NewSystemIndoor(nullptr);
    system->held = true;
    {
        ClientServerMessage message;
        message.SetMsg(system);
        message.SetMsg(NewSystemIndoor(nullptr));  // releases nothing: the first is held
        message.Reset();                           // releases the second
    }
    EXPECT_DOUBLE_EQ(system->height, 3);
    system->held = false;
    DeleteSystem(&system);
    EXPECT_EQ(system, nullptr);
}

TEST(ClientServerMessage, OptionListsTravelAsNestedTexts) {
    AccessPointOption accessPoint;
    accessPoint.brand = "B&Co";
    accessPoint.name = "<fast>";
    accessPoint.antennaCount = 4;
    accessPoint.frequencyBand = {2.4, 5.0};
    accessPoint.power = {{2.4, 20.0}};
    AntennaOption antenna;
    antenna.name = "dipole";
    antenna.gain = {{5.0, 2.5}};

    ClientServerMessage message;
    message.SetMsg(std::vector<std::string>{"dropped"});
    message.SetMsg(std::vector<AccessPointOption>{accessPoint, AccessPointOption{}});
    ClientServerMessage copy;
    std::string text = Carry(message, copy);
    EXPECT_NE(text.find("val=\"&lt;AP"), std::string::npos);
    std::vector<AccessPointOption> accessPoints;
    EXPECT_TRUE(copy.GetMsg(accessPoints));
    ASSERT_EQ(accessPoints.size(), 2u);
    EXPECT_EQ(accessPoints[0].brand, "B&Co");
    EXPECT_EQ(accessPoints[0].name, "<fast>");
    EXPECT_EQ(accessPoints[0].antennaCount, 4);
    EXPECT_EQ(accessPoints[0].frequencyBand, accessPoint.frequencyBand);
    EXPECT_EQ(accessPoints[0].power, accessPoint.power);

    message.SetMsg(std::vector<AntennaOption>{antenna});
    ClientServerMessage antennaCopy;
    Carry(message, antennaCopy);
    std::vector<AntennaOption> antennas;
    EXPECT_TRUE(antennaCopy.GetMsg(antennas));
    ASSERT_EQ(antennas.size(), 1u);
    EXPECT_EQ(antennas[0].name, "dipole");
    EXPECT_EQ(antennas[0].gain, antenna.gain);
}

TEST(ClientServerMessage, PrintsTextWithPrefix) {
    LogCapture capture;
    ClientServerMessage message;
    message.SetMsg("value");
    message.SetMsg(std::vector<std::string>{"x", "y"});
    message.PrintString(3, "version");
    message.PrintStrings(3);
    EXPECT_TRUE(capture.Contains("version________value\n"));
    EXPECT_TRUE(capture.Contains("________x\n"));
    EXPECT_TRUE(capture.Contains("________y\n"));
}
