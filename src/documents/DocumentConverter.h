#pragma once

#include <string>

class Document;

// Turns a document into its XML text and back.
class DocumentConverter {
public:
    // Replaces out with the document's text.
    static bool DocumentToText(Document* document, std::string& out);
    // Replaces the document's content by the parsed text; false, and the document as it
    // was, for text that is not XML.
    static bool TextToDocument(const std::string& text, Document* document);
};
