#include "documents/DocumentConverter.h"

bool DocumentConverter::DocumentToText(Document*, std::string&) { return false; }
bool DocumentConverter::TextToDocument(const std::string&, Document*) { return false; }
