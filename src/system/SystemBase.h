#pragma once

#include <tinyxml2.h>

#include <string>

class SystemXmlDocument;

// Base of the wrappers around the system records. The wrappers speak an older XML
// dialect of their own, smaller than the one of SystemToXML.
class SystemBase {
  public:
    SystemBase() = default;
    SystemBase(const SystemBase&) = delete;
    SystemBase& operator=(const SystemBase&) = delete;
    virtual ~SystemBase();

    // Writes the record's attributes and children into the element.
    virtual bool ToXML(tinyxml2::XMLElement* element) const = 0;
    // Reads the record from the element; lists are appended to.
    virtual bool FromXML(tinyxml2::XMLElement* element) = 0;
    // True for a wrapper of the same class whose record writes the same XML.
    virtual bool Equals(const SystemBase* other) const;

  protected:
    // The wrapper's own document, made on first use.
    SystemXmlDocument* GetDocument();
    // False, with `failure` logged at level 1, unless there is a record and an element
    // and, when `requiredName` is given, the element has that name.
    static bool CheckElement(const void* record, const tinyxml2::XMLElement* element,
                             const char* requiredName, const char* failure);

  private:
    bool DialectText(std::string& text) const;

    SystemXmlDocument* document = nullptr;
};
