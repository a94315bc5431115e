#pragma once

#include <string>

class Document;

// Reads and writes a whole document as an XML file.
class DocumentToXmlFile {
public:
    static bool DocumentFromFile(Document* document, const std::string& path);
    static bool DocumentToFile(Document* document, const std::string& path);
};
