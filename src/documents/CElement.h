#pragma once

#include <map>
#include <string>

#include "documents/Attribute.h"
#include "framework/NexoBase.h"

class XmlWrapper;

// One element of the in-memory XML tree through which all objects persist. It is at once
// a multimap of its sub-elements, keyed by element name, and a multimap of its
// attributes, keyed by id, and owns the entries of both. The maps fix the order of a
// saved file: attributes ascending by id, sub-elements by name in byte order and, under
// one name, in order of insertion.
//
// Both maps are public bases so that callers may walk them; the two bases share member
// names, so a walk names its map: element->ElementMap::begin(), or elements().
// Entries must be added and removed through the operations below, which keep ownership
// and parents right.
class CElement : public virtual NexoBase,
                 public std::multimap<std::string, CElement*>,
                 public std::multimap<eAttrNameId, Attribute*> {
public:
    using ElementMap = std::multimap<std::string, CElement*>;
    using AttributeMap = std::multimap<eAttrNameId, Attribute*>;

    CElement();
    explicit CElement(const std::string& elementName);
    CElement(const CElement&) = delete;
    CElement& operator=(const CElement&) = delete;
    // Deletes everything below and leaves the parent's map.
    ~CElement() override;

    const ElementMap& elements() const { return *this; }
    const AttributeMap& attributes() const { return *this; }

    // A new name also moves the element to its new place in its parent's map.
    void setName(const std::string& elementName);
    const std::string& getName() const { return name; }
    bool testName(const std::string& elementName) const { return name == elementName; }
    // A comment element stands for an XML comment whose text is the name.
    void setComment(bool isComment) { comment = isComment; }
    bool getComment() const { return comment; }
    void setParent(CElement* newParent) { parent = newParent; }
    CElement* getParent() const { return parent; }
    bool getOld() const { return old; }
    void setOld(bool isOld) { old = isOld; }
    bool getIsDocument() const { return isDocument; }

    // Takes ownership. False for null.
    bool addAttribute(Attribute* attribute);
    int attributeCount() const { return static_cast<int>(AttributeMap::size()); }
    // The nth attribute in id order from 0, or null past the end.
    Attribute* getAttributeFromSeq(int n) const;
    bool hasAttribute(eAttrNameId id) const { return AttributeMap::count(id) > 0; }
    // The first attribute with the id; when none and create is set, a new empty one.
    Attribute* findAttributep(eAttrNameId id, bool create = false);
    // Sets the attribute with the id to the value, making it at need.
    template <typename T>
    bool setAttribute(eAttrNameId id, T value);
    // True when the attribute exists and holds the value, compared in the value's kind.
    template <typename T>
    bool testAttribute(eAttrNameId id, T value);
    // The attribute's value as text, or null when there is no such attribute.
    const char* getAttributeValue(eAttrNameId id);
    // The attribute's value in the kind of out; false, and out untouched, when absent.
    template <typename T>
    bool getAttributeValue(eAttrNameId id, T& out);

    // Takes ownership and becomes the element's parent. False for null, for the element
    // itself and for one already held here.
    bool addElement(CElement* element);
    int elementCount() const { return static_cast<int>(ElementMap::size()); }
    // The nth sub-element in map order from 0, or null past the end.
    CElement* getElementFromSeq(int n) const;
    bool hasElement(const std::string& elementName) const {
        return ElementMap::count(elementName) > 0;
    }
    // The first sub-element with the name; when none and create is set, a new one.
    CElement* findElementp(const std::string& elementName, bool create = false);
    // Takes the sub-element out and deletes it; false when it is not held here.
    bool removeElement(CElement* element);
    // The nth sub-element (from 0), in map order, whose attribute id holds the value.
    template <typename T>
    CElement* findSubElementWithAttribute(eAttrNameId id, T value, unsigned n = 0);

    // Editing hints of one attribute; each is false when the attribute is absent.
    bool setAttributeDisplayEditTextDropBox(eAttrNameId id, bool showIt, bool editIt, bool asText,
                                            bool asDropBox);
    // Shown and edited through a file (or directory) chooser.
    bool setAttributeDisplayFilenameEdit(eAttrNameId id);
    bool setAttributeDisplayDirectoryEdit(eAttrNameId id);
    bool clearAttributeOptions(eAttrNameId id);
    bool addAttributeOption(eAttrNameId id, const std::string& option);

    // Makes this element a deep copy of other: name, comment mark, attributes and
    // sub-elements; what it held before goes. False for null.
    bool duplicate(CElement* other);
    // The tree below on the status log, indented by indent spaces.
    void print(int indent);
    // Writes the element and everything below it as the wrapper's next element. False
    // when some element has a name that is not an XML name (that element and what is
    // below it are left out) or some comment cannot be written.
    bool write(XmlWrapper* wrapper);
    // Reads the wrapper's current node and everything below it into this element,
    // adding to what it holds. Attributes whose names are not in the table are dropped.
    bool read(XmlWrapper* wrapper);
    // Same name, same counts, and each attribute and sub-element equal in map order.
    bool equalTo(CElement* other);
    // Deletes all sub-elements and attributes; the name stays.
    void Empty();

protected:
    CElement* parent = nullptr;
    std::string name;
    bool comment = false;
    bool old = false;
    // Set by a Document for itself.
    bool isDocument = false;

private:
    // Drops the entry for the sub-element without deleting it.
    bool detachElement(CElement* element);
    ElementMap::iterator findEntry(CElement* element);
    // Appends deep copies of source's attributes and sub-elements.
    void copyContentFrom(const CElement& source);
};

template <typename T>
bool CElement::setAttribute(eAttrNameId id, T value) {
    findAttributep(id, true)->set(id, value);
    return true;
}

template <typename T>
bool CElement::testAttribute(eAttrNameId id, T value) {
    Attribute* attribute = findAttributep(id, false);
    return attribute != nullptr && attribute->testValue(value);
}

template <typename T>
bool CElement::getAttributeValue(eAttrNameId id, T& out) {
    Attribute* attribute = findAttributep(id, false);
    return attribute != nullptr && attribute->get(out);
}

template <typename T>
CElement* CElement::findSubElementWithAttribute(eAttrNameId id, T value, unsigned n) {
    for (const auto& entry : elements()) {
        if (!entry.second->testAttribute<T>(id, value)) continue;
        if (n == 0) return entry.second;
        n--;
    }
    return nullptr;
}
