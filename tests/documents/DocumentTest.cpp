#include <gtest/gtest.h>
#include <tinyxml.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "WorkingDirectory.h"
#include "documents/Document.h"
#include "documents/XmlWrapper.h"
#include "support/TempDir.h"

namespace {

// Runs each test in a fresh current directory, where writes make their temporary file.
class DocumentTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(dir.path.empty()); }

    // A small simulation-like tree, its attributes set out of id order.
    static void Fill(Document& document) {
        document.setName("SimulationDocument");
        document.setAttribute(A_NAME, "office");
        document.setAttribute(A_SIMOBJID, 1);
        auto* parameter = new CElement("Parameter");
        parameter->setAttribute(A_DBLVAL, 1.5);
        parameter->setAttribute(A_PARNAME, "PN_FREQ");
        parameter->setAttribute(A_QIKSET, true);
        document.addElement(parameter);
        auto* data = new CElement("SimulationData");
        data->setAttribute(A_X, 0.25f);
        data->addElement(new CElement("OpticElement"));
        document.addElement(data);
        document.addElement(new CElement("Coordinates"));
    }

    WorkingDirectory working;
    TempDir& dir = working.dir;
};

void WriteText(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

TEST_F(DocumentTest, FileRoundTripKeepsTreeAndFixedOrder) {
    Document saved;
    Fill(saved);
    std::string path = dir.File("office.xml");
    ASSERT_TRUE(saved.write(path));
    EXPECT_FALSE(std::filesystem::exists(dir.File("___tempDocument.xml")));

    std::string text = ReadFile(path);
    EXPECT_EQ(text.rfind("<?xml version=\"1.0\" ?>", 0), 0u) << text;
    EXPECT_LT(text.find("A_SIMOBJID=\"1\""), text.find("A_NAME=\"office\""));
    EXPECT_LT(text.find("<Coordinates"), text.find("<Parameter"));
    EXPECT_LT(text.find("<Parameter"), text.find("<SimulationData"));
    EXPECT_LT(text.find("A_QIKSET=\"true\""), text.find("A_PARNAME=\"PN_FREQ\""));
    EXPECT_NE(text.find("A_DBLVAL=\"1.500000\""), std::string::npos);
    EXPECT_NE(text.find("A_X=\"0.250000\""), std::string::npos);

    Document loaded;
    ASSERT_TRUE(loaded.read(path));
    EXPECT_TRUE(loaded.equalTo(&saved));
    EXPECT_EQ(loaded.findElementp("Parameter")->findAttributep(A_DBLVAL)->getDouble(), 1.5);

    // The same file again, through the directory and name forms.
    Document again;
    ASSERT_TRUE(again.read("office.xml", dir.path.string() + "/"));
    EXPECT_TRUE(again.equalTo(&saved));
    ASSERT_TRUE(again.write("copy.xml", (dir.path.string() + "/").c_str()));
    EXPECT_EQ(ReadFile(dir.File("copy.xml")), text);
}

TEST_F(DocumentTest, UnknownAttributesAreDroppedOnLoad) {
    std::string path = dir.File("foreign.xml");
    WriteText(path,
              "<?xml version=\"1.0\" ?>\n<Root A_NAME=\"r\" colour=\"red\" A_Y=\"2\">"
              "<b A_X=\"1\"/>text<a/><b A_X=\"2\"/></Root>");
    Document document;
    ASSERT_TRUE(document.read(path));
    EXPECT_EQ(document.getName(), "Root");
    EXPECT_EQ(document.attributeCount(), 2);
    EXPECT_EQ(document.elementCount(), 3);
    EXPECT_EQ(document.findSubElementWithAttribute<int>(A_X, 2, 0)->getName(), "b");
    EXPECT_EQ(document.getElementFromSeq(1)->getAttributeValue(A_X), std::string("1"));

    std::string out;
    ASSERT_TRUE(document.writeToString(out));
    EXPECT_EQ(out.find("colour"), std::string::npos);
    EXPECT_EQ(out.find("text"), std::string::npos);
    EXPECT_LT(out.find("<a"), out.find("<b"));
}

TEST_F(DocumentTest, CharArrayAndStringRoundTrips) {
    Document saved;
    Fill(saved);
    char* block = nullptr;
    int size = 0;
    ASSERT_TRUE(saved.writeToChar(&block, &size));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(static_cast<size_t>(size), std::strlen(block));
    EXPECT_NE(std::string(block).find("\n\t<Coordinates"), std::string::npos) << block;

    std::string text;
    ASSERT_TRUE(saved.writeToString(text));
    EXPECT_EQ(text, std::string(block, size));
    text = "prefix:" + text;
    std::string appended = "prefix:";
    ASSERT_TRUE(saved.writeToString(appended));
    EXPECT_EQ(appended, text);

    Document fromChar;
    char* end = nullptr;
    ASSERT_TRUE(fromChar.readFromCharArray(block, &end));
    EXPECT_TRUE(end >= block && end <= block + size);
    EXPECT_TRUE(fromChar.equalTo(&saved));
    std::free(block);

    Document fromString;
    ASSERT_TRUE(fromString.readFromCharArray(text.c_str() + 7, nullptr));
    EXPECT_TRUE(fromString.equalTo(&saved));
}

TEST_F(DocumentTest, XmlImageAndTinyXmlDocumentRead) {
    Document saved;
    Fill(saved);
    EXPECT_FALSE(saved.getXmlOutValid());
    XmlWrapper* image = saved.getxmlp();
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(saved.getXmlOutValid());
    TiXmlDocument* xml = image->getxmlp();
    ASSERT_NE(xml->RootElement(), nullptr);
    EXPECT_STREQ(xml->RootElement()->Value(), "SimulationDocument");

    Document loaded;
    ASSERT_TRUE(loaded.read(static_cast<const TiXmlDocument*>(xml)));
    EXPECT_TRUE(loaded.equalTo(&saved));
    EXPECT_FALSE(loaded.read(static_cast<const TiXmlDocument*>(nullptr)));

    saved.clear();
    EXPECT_FALSE(saved.getXmlOutValid());
    EXPECT_EQ(saved.elementCount(), 0);
}

TEST_F(DocumentTest, CommentElementsSurviveRoundTrip) {
    Document saved;
    saved.setName("root");
    auto* note = new CElement(" made by hand ");
    note->setComment(true);
    saved.addElement(note);
    saved.addElement(new CElement("z"));
    std::string path = dir.File("comment.xml");
    ASSERT_TRUE(saved.write(path));
    EXPECT_NE(ReadFile(path).find("<!-- made by hand -->"), std::string::npos);

    Document loaded;
    ASSERT_TRUE(loaded.read(path));
    EXPECT_TRUE(loaded.equalTo(&saved));
    CElement* loadedNote = loaded.getElementFromSeq(0);
    ASSERT_NE(loadedNote, nullptr);
    EXPECT_TRUE(loadedNote->getComment());
    EXPECT_EQ(loadedNote->getName(), " made by hand ");
    EXPECT_FALSE(loaded.findElementp("z")->getComment());
}

TEST_F(DocumentTest, FailedReadsLeaveTheDocumentAsItWas) {
    Document document;
    Fill(document);
    Document reference;
    reference.duplicate(&document);

    EXPECT_FALSE(document.read(dir.File("missing.xml")));
    WriteText(dir.File("plain.txt"), "this is not XML at all");
    EXPECT_FALSE(document.read(dir.File("plain.txt")));
    WriteText(dir.File("broken.xml"), "<root><open></root>");
    EXPECT_FALSE(document.read(dir.File("broken.xml")));
    WriteText(dir.File("empty.xml"), "");
    EXPECT_FALSE(document.read(dir.File("empty.xml")));
    EXPECT_FALSE(document.read(dir.path.string()));
    EXPECT_FALSE(document.read(static_cast<const char*>(nullptr)));
    char* end = nullptr;
    EXPECT_FALSE(document.readFromCharArray(nullptr, &end));
    EXPECT_FALSE(document.readFromCharArray("<a><b></a>", &end));
    EXPECT_FALSE(document.readFromCharArray("", nullptr));
    EXPECT_TRUE(document.equalTo(&reference));
}

TEST_F(DocumentTest, FailedWritesLeaveTargetsUntouched) {
    Document document;
    Fill(document);
    EXPECT_FALSE(document.write(dir.File("no/such/dir/out.xml")));
    EXPECT_FALSE(document.write(std::string()));
    EXPECT_FALSE(document.write(static_cast<const char*>(nullptr), "x"));

    // A directory in the target's place cannot be replaced by the file.
    std::filesystem::create_directory(dir.File("target"));
    WriteText(dir.File("target/inside"), "kept");
    EXPECT_FALSE(document.write(dir.File("target")));
    EXPECT_EQ(ReadFile(dir.File("target/inside")), "kept");
    EXPECT_FALSE(std::filesystem::exists(dir.File("___tempDocument.xml")));

    // An element name that could not be read back fails the write.
    WriteText(dir.File("kept.xml"), "<kept/>");
    auto* list = new CElement("FreqResponse(walls)");
    document.addElement(list);
    EXPECT_FALSE(document.write(dir.File("kept.xml")));
    EXPECT_EQ(ReadFile(dir.File("kept.xml")), "<kept/>");
    list->setName("FreqResponse");

    // An existing file is replaced whole.
    WriteText(dir.File("old.xml"), "<old/>");
    ASSERT_TRUE(document.write(dir.File("old.xml")));
    Document loaded;
    ASSERT_TRUE(loaded.read(dir.File("old.xml")));
    EXPECT_TRUE(loaded.equalTo(&document));
}

TEST_F(DocumentTest, ConcurrentWritersShareTheTemporaryName) {
    // Two threads write different documents through the one temporary file name; each
    // target must hold its own document every time.
    auto writer = [this](const std::string& name, bool* allGood) {
        Document document;
        document.setName(name);
        for (int i = 0; i < 30; i++) {
            document.setAttribute(A_INDEX, i);
            Document loaded;
            *allGood = document.write(dir.File(name + ".xml")) &&
                       loaded.read(dir.File(name + ".xml")) && loaded.equalTo(&document) &&
                       *allGood;
        }
    };
    bool firstGood = true, secondGood = true;
    std::thread first(writer, "first", &firstGood);
    std::thread second(writer, "second", &secondGood);
    first.join();
    second.join();
    EXPECT_TRUE(firstGood);
    EXPECT_TRUE(secondGood);
}

TEST_F(DocumentTest, WriteFallsBackToTheTargetDirectory) {
    // The current directory goes away under the writer: the temporary file is then made
    // beside the target.
    TempDir target;
    TempDir doomed;
    std::filesystem::current_path(doomed.path);
    std::filesystem::remove(doomed.path);
    Document document;
    Fill(document);
    ASSERT_TRUE(document.write(target.File("out.xml")));
    EXPECT_FALSE(std::filesystem::exists(target.File("___tempDocument.xml")));
    Document loaded;
    ASSERT_TRUE(loaded.read(target.File("out.xml")));
    EXPECT_TRUE(loaded.equalTo(&document));
}

}  // namespace
