#include "documents/DocumentToXmlFile.h"

bool DocumentToXmlFile::DocumentFromFile(Document*, const std::string&) { return false; }
bool DocumentToXmlFile::DocumentToFile(Document*, const std::string&) { return false; }
