#include "documents/DocumentToXmlFile.h"

#include "documents/Document.h"
#include "logging/Log.h"

bool DocumentToXmlFile::DocumentFromFile(Document* document, const std::string& path) {
    if (document == nullptr || !document->read(path)) {
        Log::log(1) << "DocumentToXmlFile::DocumentFromFile: cannot read " << path << "\n";
        return false;
    }
    return true;
}

bool DocumentToXmlFile::DocumentToFile(Document* document, const std::string& path) {
    if (document == nullptr || !document->write(path)) {
        Log::log(1) << "DocumentToXmlFile::DocumentToFile: cannot write " << path << "\n";
        return false;
    }
    return true;
}
