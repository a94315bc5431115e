#pragma once

#include <tinyxml2.h>

#include <string>

// Writes the attributes of a record into an element. A record's attribute list is a
// function that calls a visitor once per field, in the order of the XML; this visitor
// writes, XmlAttributeReader reads, so both directions share one list.
class XmlAttributeWriter {
  public:
    explicit XmlAttributeWriter(tinyxml2::XMLElement* element) : element(element) {}

    template <typename T>
    void operator()(const char* name, const T& value) {
        element->SetAttribute(name, value);
    }
    // A string is written only if it exists.
    void operator()(const char* name, char* const& value) {
        if (value != nullptr) element->SetAttribute(name, value);
    }
    void operator()(const char* name, const std::string& value) {
        element->SetAttribute(name, value.c_str());
    }

    // Written, but never read back.
    template <typename T>
    void writeOnly(const char* name, const T& value) {
        (*this)(name, value);
    }
    // Read as 0 when the attribute is missing.
    void zeroIfMissing(const char* name, double value) { (*this)(name, value); }
    // Read only when present and not empty.
    void nonEmpty(const char* name, char* const& value) { (*this)(name, value); }

  private:
    tinyxml2::XMLElement* element;
};
