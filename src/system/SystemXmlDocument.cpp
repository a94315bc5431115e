#include "system/SystemXmlDocument.h"

#include "logging/Log.h"

SystemXmlDocument::SystemXmlDocument()
    : tinyxml2::XMLDocument(true, tinyxml2::COLLAPSE_WHITESPACE) {}

tinyxml2::XMLElement* SystemXmlDocument::NewRoot(const char* name) {
    Clear();
    return InsertEndChild(NewElement(name))->ToElement();
}

void SystemXmlDocument::ToText(std::string& text) const {
    tinyxml2::XMLPrinter printer;
    Print(&printer);
    text = printer.CStr();
}

bool SystemXmlDocument::FromText(const std::string& text, const char* caller) {
    if (Parse(text.c_str(), text.size()) == tinyxml2::XML_SUCCESS) return true;
    Log::log(1) << caller << " - parse xml failed " << ErrorName() << "\n";
    return false;
}
