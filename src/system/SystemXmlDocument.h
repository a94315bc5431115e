#pragma once

#include <tinyxml2.h>

#include <string>

// The XML document of system files and wire texts: entities are processed, white space
// in text is collapsed, and the text is printed indented, without an XML declaration.
class SystemXmlDocument : public tinyxml2::XMLDocument {
  public:
    SystemXmlDocument();

    // Empties the document and gives it a root element of that name.
    tinyxml2::XMLElement* NewRoot(const char* name);
    // The whole document as indented text.
    void ToText(std::string& text) const;
    // Parses text; a failure is logged at level 1 under the caller's name.
    bool FromText(const std::string& text, const char* caller);
};
