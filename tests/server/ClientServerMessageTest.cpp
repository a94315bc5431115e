#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "server/ClientServerMessage.h"
#include "support/LogCapture.h"
#include "system/SystemToXML.h"

namespace {

const std::string awkward = "a<b>&c\"d'e  f";

// Writes `message` to text and reads it into `copy`; returns the text.
std::string Carry(const ClientServerMessage& message, ClientServerMessage& copy) {
    std::string text;
    EXPECT_TRUE(message.ToString(text));
    EXPECT_TRUE(copy.FromString(text));
    return text;
}

auto Fields(const AccessPointOption& o) {
    return std::tie(o.brand, o.name, o.description, o.link, o.standards, o.frequencyBand, o.power,
                    o.gain, o.bandwidth, o.antennaCount);
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
}

TEST(ClientServerMessage, EscapedTextsAndOptionListsRoundTrip) {
    ClientServerMessage message;
    message.SetType(MSGTYPE_SET);
    message.SetMsg(MSG_DATALOCATION);
    message.SetMsg(awkward);
    message.SetMsg(std::vector<std::string>{awkward, "", "plain"});
    ClientServerMessage copy;
    EXPECT_NE(Carry(message, copy).find("&lt;"), std::string::npos);
    EXPECT_TRUE(copy.TestType(MSGTYPE_SET));
    EXPECT_TRUE(copy.TestMsg(MSG_DATALOCATION));
    EXPECT_TRUE(copy.TestMsg(awkward));
    std::vector<std::string> list;
    EXPECT_TRUE(copy.GetMsg(list));
    EXPECT_EQ(list, (std::vector<std::string>{awkward, "", "plain"}));

    // Options travel as XML texts inside the list; setting them replaces the list. Both
    // kinds of option share this code.
    AccessPointOption accessPoint{"B&Co",     "<fast>",   awkward,       "http://x/?a=1&b=2",
                                  "802.11ac", {2.4, 5.0}, {{2.4, 20.0}}, {{5, 3}},
                                  {20, 40},   4};
    message.SetMsg(std::vector<AccessPointOption>{accessPoint, AccessPointOption{}});
    ClientServerMessage accessPointCopy;
    Carry(message, accessPointCopy);
    std::vector<AccessPointOption> accessPoints;
    EXPECT_TRUE(accessPointCopy.GetMsg(accessPoints));
    ASSERT_EQ(accessPoints.size(), 2u);
    EXPECT_TRUE(Fields(accessPoints[0]) == Fields(accessPoint));
    EXPECT_TRUE(Fields(accessPoints[1]) == Fields(AccessPointOption{}));
}

// The server tests bounce whole systems through messages; here the hand-over.
TEST(ClientServerMessage, SystemPayloadIsHandedOverOnce) {
    ClientServerMessage message;
    message.SetMsg(NewSystemIndoor(nullptr));
    ClientServerMessage copy;
    EXPECT_NE(Carry(message, copy).find("<System_ "), std::string::npos);
    e_System_* received = nullptr;
    ASSERT_TRUE(copy.GetMsg(&received));
    EXPECT_EQ(received->height, 3);
    DeleteSystem(&received);
    LogCapture capture;
    EXPECT_FALSE(copy.GetMsg(&received));
    EXPECT_EQ(received, nullptr);
    EXPECT_TRUE(
        capture.Contains("ClientServerMessage::GetMsg() - get system from message failed\n"));
}

TEST(ClientServerMessage, ParsingIsLenientButRefusesBadXml) {
    ClientServerMessage message;
    EXPECT_TRUE(message.FromString("<anyName string=\"hello\"/>"));
    EXPECT_TRUE(message.TestType(MSGTYPE_NONE));
    EXPECT_TRUE(message.TestMsg(MSG_NONE));
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

    // Booleans are only the exact words.
    bool value = true;
    message.SetMsg(false);
    EXPECT_TRUE(message.TestMsg(std::string("false")));
    EXPECT_TRUE(message.GetMsg(value));
    EXPECT_FALSE(value);
    message.SetMsg("TRUE");
    EXPECT_FALSE(message.GetMsg(value));
    EXPECT_FALSE(value);

    LogCapture capture;
    EXPECT_FALSE(message.FromString("<a><b></a>"));
    EXPECT_TRUE(capture.Contains("ClientServerMessage::FromString() - parse xml failed"));
    EXPECT_FALSE(message.FromString(""));
    EXPECT_FALSE(message.FromString("<!-- only a comment -->"));
    EXPECT_TRUE(capture.Contains("ClientServerMessage::FromString() - no root element\n"));
}
