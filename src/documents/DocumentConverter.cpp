#include "documents/DocumentConverter.h"

#include "documents/Document.h"
#include "logging/Log.h"

bool DocumentConverter::DocumentToText(Document* document, std::string& out) {
    if (document == nullptr) {
        Log::log(1) << "DocumentConverter::DocumentToText: no document\n";
        return false;
    }
    out.clear();
    return document->writeToString(out);
}

bool DocumentConverter::TextToDocument(const std::string& text, Document* document) {
    if (document == nullptr) {
        Log::log(1) << "DocumentConverter::TextToDocument: no document\n";
        return false;
    }
    if (!document->readFromCharArray(text.c_str(), nullptr)) {
        Log::log(1) << "DocumentConverter::TextToDocument: the text is not XML\n";
        return false;
    }
    return true;
}
