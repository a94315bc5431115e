#pragma once

#include <tinyxml2.h>

#include <string>

// Reads the attributes of a record from an element, through the same attribute lists as
// XmlAttributeWriter. A missing or malformed attribute leaves the field as it is.
class XmlAttributeReader {
  public:
    explicit XmlAttributeReader(const tinyxml2::XMLElement* element) : element(element) {}

    template <typename T>
    void operator()(const char* name, T& value) {
        element->QueryAttribute(name, &value);
    }
    // A present string replaces the record's own calloc'ed copy.
    void operator()(const char* name, char*& value);
    void operator()(const char* name, std::string& value);

    template <typename T>
    void writeOnly(const char*, T&) {}
    void zeroIfMissing(const char* name, double& value);
    void nonEmpty(const char* name, char*& value);

  private:
    void replace(char*& value, const char* text);

    const tinyxml2::XMLElement* element;
};
