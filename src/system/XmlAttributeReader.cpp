#include "system/XmlAttributeReader.h"

#include <cstdlib>

#include "system/SystemRecords.h"

void XmlAttributeReader::operator()(const char* name, char*& value) {
    const char* text = element->Attribute(name);
    if (text != nullptr) replace(value, text);
}

void XmlAttributeReader::operator()(const char* name, std::string& value) {
    const char* text = element->Attribute(name);
    if (text != nullptr) value = text;
}

void XmlAttributeReader::zeroIfMissing(const char* name, double& value) {
    if (element->QueryAttribute(name, &value) == tinyxml2::XML_NO_ATTRIBUTE) value = 0;
}

void XmlAttributeReader::nonEmpty(const char* name, char*& value) {
    const char* text = element->Attribute(name);
    if (text != nullptr && *text != '\0') replace(value, text);
}

void XmlAttributeReader::replace(char*& value, const char* text) {
    std::free(value);
    value = CopyString(text);
}
