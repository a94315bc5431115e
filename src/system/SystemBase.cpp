#include "system/SystemBase.h"

#include <cstring>
#include <typeinfo>

#include "logging/Log.h"
#include "system/SystemXmlDocument.h"

SystemBase::~SystemBase() { delete document; }

bool SystemBase::Equals(const SystemBase* other) const {
    if (other == nullptr || typeid(*this) != typeid(*other)) return false;
    std::string mine;
    std::string theirs;
    return DialectText(mine) && other->DialectText(theirs) && mine == theirs;
}

SystemXmlDocument* SystemBase::GetDocument() {
    if (document == nullptr) document = new SystemXmlDocument();
    return document;
}

bool SystemBase::CheckElement(const void* record, const tinyxml2::XMLElement* element,
                              const char* requiredName, const char* failure) {
    if (record != nullptr && element != nullptr &&
        (requiredName == nullptr || std::strcmp(element->Name(), requiredName) == 0)) {
        return true;
    }
    Log::log(1) << failure << "\n";
    return false;
}

bool SystemBase::DialectText(std::string& text) const {
    SystemXmlDocument scratch;
    bool written = ToXML(scratch.NewRoot("SystemBase"));
    scratch.ToText(text);
    return written;
}
