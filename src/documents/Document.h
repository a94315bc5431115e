#pragma once

#include <memory>
#include <string>

#include "documents/CElement.h"

class TiXmlDocument;
class XmlWrapper;

// A root element that can be written to and read from a file, a character block or a
// string. A document is its own parent.
//
// A file is written into "___tempDocument.xml" in the current directory and then renamed
// onto its path, so that a failed write leaves the target as it was. Writes of one
// process take turns on that name. When the current directory will not take the file, or
// the rename cannot cross to the target's file system, the temporary file is made in the
// target's directory instead.
//
// A read replaces the document's content only when the text was loaded and parsed; a
// missing file, a file that is not XML or a null text leave the document as it was and
// give false.
class Document : public CElement {
public:
    Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document() override;

    using CElement::duplicate;
    using CElement::print;
    using CElement::read;
    using CElement::write;

    bool write(const char* path);
    bool write(const std::string& path) { return write(path.c_str()); }
    // The path is directory and name joined as they stand.
    bool write(const char* name, const char* directory);
    bool write(const std::string& name, const std::string& directory);
    // The document as text (tab indent) in a block from malloc that the caller frees;
    // *size is the length of the text, and a terminating zero follows it in the block.
    bool writeToChar(char** out, int* size);
    // Appends the same text.
    bool writeToString(std::string& out);

    bool read(const char* path);
    bool read(const std::string& path) { return read(path.c_str()); }
    bool read(const char* name, const char* directory);
    bool read(const std::string& name, const std::string& directory);
    bool read(const TiXmlDocument* source);
    // Parses the text; *end, when end is given, receives where the parse stopped.
    bool readFromCharArray(const char* text, char** end);

    bool duplicate(Document* other) { return CElement::duplicate(other); }

    // A fresh XML image of the document, kept until the next getxmlp or clearXmlOut.
    XmlWrapper* getxmlp();
    void clearXmlOut();
    bool getXmlOutValid() const { return xmlOutValid; }
    // Drops the XML image and the content.
    void clear();
    // The whole tree on the status log.
    virtual void print();

private:
    bool build(XmlWrapper& out);
    bool take(XmlWrapper& in);

    std::unique_ptr<XmlWrapper> xmlOut;
    bool xmlOutValid = false;
};
