#include "documents/XmlWrapper.h"

#include <sys/stat.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "logging/Log.h"

namespace {

// The file opened for reading when it is a regular file: a directory or a device would
// make the XML library ask for an absurd buffer or wait for ever.
FILE* OpenRegularFile(const char* path) {
    struct stat status;
    if (path == nullptr || stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
    return std::fopen(path, "rb");
}

// A name the XML library reads back as it was written: a letter (any byte above 127
// counts as one), or "_", then letters, digits, "_", "-", "." or ":".
bool IsXmlName(const char* name) {
    auto letter = [](unsigned char c) { return c > 127 || std::isalpha(c) != 0; };
    auto unsignedName = reinterpret_cast<const unsigned char*>(name);
    if (!letter(unsignedName[0]) && unsignedName[0] != '_') return false;
    for (const unsigned char* c = unsignedName + 1; *c != '\0'; c++) {
        if (!letter(*c) && std::isdigit(*c) == 0 && std::strchr("_-.:", *c) == nullptr) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool XmlWrapper::start() {
    clear();
    document.LinkEndChild(new TiXmlDeclaration("1.0", "", ""));
    return true;
}

bool XmlWrapper::place(TiXmlNode* node) {
    TiXmlNode* under = &document;
    if (firstPlaced && goDown) {
        under = current;
    } else if (firstPlaced && current != nullptr && current->Parent() != nullptr) {
        under = current->Parent();
    }
    under->LinkEndChild(node);
    if (!firstPlaced) root = node;
    firstPlaced = true;
    goDown = false;
    moveTo(node);
    return true;
}

bool XmlWrapper::addComment(const char* text) {
    if (text == nullptr) text = "";
    if (std::strstr(text, "-->") != nullptr) {
        Log::log(1) << "XmlWrapper::addComment: a comment cannot hold \"-->\"\n";
        return false;
    }
    return place(new TiXmlComment(text));
}

bool XmlWrapper::nextElement(const char* name) {
    if (name == nullptr || !IsXmlName(name)) {
        Log::log(1) << "XmlWrapper::nextElement: \"" << (name ? name : "")
                    << "\" is not an element name\n";
        return false;
    }
    return place(new TiXmlElement(name));
}

bool XmlWrapper::addAttribute(const char* name, const char* value) {
    TiXmlElement* element = current != nullptr ? current->ToElement() : nullptr;
    if (element == nullptr || name == nullptr) return false;
    element->SetAttribute(name, value != nullptr ? value : "");
    return true;
}

bool XmlWrapper::startSubElements() {
    goDown = current != nullptr;
    return goDown;
}

bool XmlWrapper::finishSubElements() {
    if (goDown) {
        goDown = false;
        return true;
    }
    if (current == nullptr || current->Parent() == nullptr || current->Parent() == &document) {
        return false;
    }
    moveTo(current->Parent());
    return true;
}

bool XmlWrapper::write(const char* path) {
    FILE* file = path != nullptr ? std::fopen(path, "w") : nullptr;
    if (file == nullptr) {
        Log::log(1) << "XmlWrapper::write: cannot open " << (path ? path : "(null)") << "\n";
        return false;
    }
    bool saved = document.SaveFile(file);
    saved = (std::fclose(file) == 0) && saved;
    if (!saved) Log::log(1) << "XmlWrapper::write: cannot write " << path << "\n";
    return saved;
}

bool XmlWrapper::writeToChar(char** out, int* size) {
    if (out == nullptr || size == nullptr) return false;
    TiXmlPrinter printer;
    printer.SetIndent("\t");
    document.Accept(&printer);
    size_t length = printer.Size();
    auto* block = static_cast<char*>(std::malloc(length + 1));
    if (block == nullptr) {
        Log::log(1) << "XmlWrapper::writeToChar: out of memory\n";
        return false;
    }
    std::memcpy(block, printer.CStr(), length + 1);
    *out = block;
    *size = static_cast<int>(length);
    return true;
}

bool XmlWrapper::writeToString(std::string& out) {
    TiXmlPrinter printer;
    printer.SetIndent("\t");
    document.Accept(&printer);
    out += printer.Str();
    return true;
}

bool XmlWrapper::takeRoot() {
    root = document.RootElement();
    moveTo(root);
    if (root == nullptr) Log::log(1) << "XmlWrapper: the document has no root element\n";
    return root != nullptr;
}

bool XmlWrapper::read(const char* path) {
    NexoBase::log(logStatus) << "XmlWrapper::read(const char *fileName)\n";
    clear();
    FILE* file = OpenRegularFile(path);
    if (file == nullptr) {
        Log::log(1) << "XmlWrapper::read: cannot open " << (path ? path : "(null)") << "\n";
        return false;
    }
    bool loaded = false;
    try {
        loaded = document.LoadFile(file, TIXML_ENCODING_UNKNOWN);
    } catch (const std::bad_alloc&) {
        document.Clear();
    }
    std::fclose(file);
    if (!loaded) {
        Log::log(1) << "XmlWrapper::read: " << path << ": " << document.ErrorDesc() << "\n";
        return false;
    }
    return takeRoot();
}

bool XmlWrapper::read(const TiXmlDocument* source) {
    clear();
    if (source == nullptr) return false;
    document = *source;
    return takeRoot();
}

bool XmlWrapper::readCharArray(const char* text, char** end) {
    clear();
    if (text == nullptr) {
        Log::log(1) << "XmlWrapper::readCharArray: no text\n";
        return false;
    }
    const char* stop = nullptr;
    bool parsed = false;
    try {
        stop = document.Parse(text, nullptr, TIXML_ENCODING_UNKNOWN);
        parsed = !document.Error();
    } catch (const std::bad_alloc&) {
        document.Clear();
    }
    if (end != nullptr) *end = const_cast<char*>(stop != nullptr ? stop : text);
    if (!parsed) {
        Log::log(1) << "XmlWrapper::readCharArray: " << document.ErrorDesc() << "\n";
        return false;
    }
    return takeRoot();
}

const char* XmlWrapper::getElementValue() const {
    return current != nullptr ? current->Value() : "";
}

bool XmlWrapper::isComment() const {
    return current != nullptr && current->Type() == TiXmlNode::TINYXML_COMMENT;
}

bool XmlWrapper::currentHasNextSibling() const { return NextWalkedSibling(current) != nullptr; }

bool XmlWrapper::nextElement() {
    TiXmlNode* sibling = NextWalkedSibling(current);
    if (sibling == nullptr) return false;
    moveTo(sibling);
    return true;
}

bool XmlWrapper::nextAttribute() {
    if (currentAttribute != nullptr) currentAttribute = currentAttribute->Next();
    return currentAttribute != nullptr;
}

const char* XmlWrapper::getAttributeName() const {
    return currentAttribute != nullptr ? currentAttribute->Name() : "";
}

const char* XmlWrapper::getAttributeValue() const {
    return currentAttribute != nullptr ? currentAttribute->Value() : "";
}

bool XmlWrapper::checkAttribute(const char* name) const {
    return name != nullptr && currentAttribute != nullptr &&
           std::strcmp(currentAttribute->Name(), name) == 0;
}

bool XmlWrapper::hasChildren() const { return FirstWalkedChild(current) != nullptr; }

bool XmlWrapper::startChildren() {
    TiXmlNode* child = FirstWalkedChild(current);
    if (child == nullptr) return false;
    moveTo(child);
    return true;
}

bool XmlWrapper::finishChildren() {
    if (current == nullptr || current == root || current->Parent() == nullptr) return false;
    moveTo(current->Parent());
    return true;
}

void XmlWrapper::clear() {
    document.Clear();
    document.ClearError();
    root = nullptr;
    moveTo(nullptr);
    goDown = false;
    firstPlaced = false;
}

void XmlWrapper::moveTo(TiXmlNode* node) {
    current = node;
    TiXmlElement* element = node != nullptr ? node->ToElement() : nullptr;
    currentAttribute = element != nullptr ? element->FirstAttribute() : nullptr;
}

bool XmlWrapper::IsWalked(const TiXmlNode* node) {
    return node->Type() == TiXmlNode::TINYXML_ELEMENT || node->Type() == TiXmlNode::TINYXML_COMMENT;
}

TiXmlNode* XmlWrapper::FirstWalkedChild(const TiXmlNode* node) {
    if (node == nullptr) return nullptr;
    TiXmlNode* child = const_cast<TiXmlNode*>(node)->FirstChild();
    while (child != nullptr && !IsWalked(child)) child = child->NextSibling();
    return child;
}

TiXmlNode* XmlWrapper::NextWalkedSibling(const TiXmlNode* node) {
    if (node == nullptr) return nullptr;
    TiXmlNode* sibling = const_cast<TiXmlNode*>(node)->NextSibling();
    while (sibling != nullptr && !IsWalked(sibling)) sibling = sibling->NextSibling();
    return sibling;
}
