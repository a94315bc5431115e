#include "documents/Document.h"

#include <cstdio>
#include <mutex>

#include "documents/XmlWrapper.h"
#include "logging/Log.h"

namespace {

const std::string tempDocumentName = "___tempDocument.xml";

// Writers of this process take turns on the temporary file.
std::mutex tempDocumentLock;

// Saves into the temporary file and moves it onto the path; the temporary file is gone
// afterwards whatever happened.
bool SaveThrough(XmlWrapper& xml, const std::string& temp, const char* path) {
    bool saved = xml.write(temp.c_str()) && std::rename(temp.c_str(), path) == 0;
    if (!saved) std::remove(temp.c_str());
    return saved;
}

// The directory part of a path with its trailing "/", or an empty text.
std::string DirectoryOf(const std::string& path) {
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string Join(const char* name, const char* directory) { return std::string(directory) + name; }

}  // namespace

Document::Document() {
    parent = this;
    isDocument = true;
}

Document::~Document() = default;

bool Document::build(XmlWrapper& out) { return out.start() && CElement::write(&out); }

bool Document::take(XmlWrapper& in) {
    Empty();
    comment = false;
    return CElement::read(&in);
}

bool Document::write(const char* path) {
    if (path == nullptr || *path == '\0') {
        Log::log(1) << "Document::write: no path\n";
        return false;
    }
    XmlWrapper xml;
    if (!build(xml)) {
        Log::log(1) << "Document::write: the document cannot be written as XML\n";
        return false;
    }
    std::lock_guard<std::mutex> guard(tempDocumentLock);
    if (SaveThrough(xml, tempDocumentName, path)) return true;
    std::string beside = DirectoryOf(path) + tempDocumentName;
    if (beside != tempDocumentName && SaveThrough(xml, beside, path)) return true;
    Log::log(1) << "Document::write: cannot write " << path << "\n";
    return false;
}

bool Document::write(const char* name, const char* directory) {
    if (name == nullptr || directory == nullptr) return write(static_cast<const char*>(nullptr));
    return write(Join(name, directory));
}

bool Document::write(const std::string& name, const std::string& directory) {
    return write(directory + name);
}

bool Document::writeToChar(char** out, int* size) {
    XmlWrapper xml;
    return build(xml) && xml.writeToChar(out, size);
}

bool Document::writeToString(std::string& out) {
    XmlWrapper xml;
    return build(xml) && xml.writeToString(out);
}

bool Document::read(const char* path) {
    NexoBase::log(logStatus) << "Document::read( const char *fnamein)\n";
    XmlWrapper xml;
    return xml.read(path) && take(xml);
}

bool Document::read(const char* name, const char* directory) {
    if (name == nullptr || directory == nullptr) return read(static_cast<const char*>(nullptr));
    return read(Join(name, directory));
}

bool Document::read(const std::string& name, const std::string& directory) {
    return read(directory + name);
}

bool Document::read(const TiXmlDocument* source) {
    XmlWrapper xml;
    return xml.read(source) && take(xml);
}

bool Document::readFromCharArray(const char* text, char** end) {
    XmlWrapper xml;
    return xml.readCharArray(text, end) && take(xml);
}

XmlWrapper* Document::getxmlp() {
    xmlOut = std::make_unique<XmlWrapper>();
    xmlOutValid = build(*xmlOut);
    return xmlOut.get();
}

void Document::clearXmlOut() {
    xmlOut.reset();
    xmlOutValid = false;
}

void Document::clear() {
    clearXmlOut();
    Empty();
}

void Document::print() { CElement::print(0); }
