#include "documents/CElement.h"

#include <iterator>
#include <utility>

#include "documents/XmlWrapper.h"

CElement::CElement() { Attribute::SetNameStrings(); }

CElement::CElement(const std::string& elementName) : name(elementName) {
    Attribute::SetNameStrings();
}

CElement::~CElement() {
    Empty();
    if (parent != nullptr && parent != this) parent->detachElement(this);
}

void CElement::setName(const std::string& elementName) {
    if (elementName == name) return;
    bool rekey = parent != nullptr && parent != this && parent->detachElement(this);
    name = elementName;
    if (rekey) parent->ElementMap::emplace(name, this);
}

bool CElement::addAttribute(Attribute* attribute) {
    if (attribute == nullptr) return false;
    AttributeMap::emplace(attribute->getNameId(), attribute);
    return true;
}

Attribute* CElement::getAttributeFromSeq(int n) const {
    if (n < 0 || n >= attributeCount()) return nullptr;
    return std::next(AttributeMap::begin(), n)->second;
}

Attribute* CElement::findAttributep(eAttrNameId id, bool create) {
    auto found = AttributeMap::find(id);
    if (found != AttributeMap::end()) return found->second;
    if (!create) return nullptr;
    auto* attribute = new Attribute(id);
    addAttribute(attribute);
    return attribute;
}

const char* CElement::getAttributeValue(eAttrNameId id) {
    Attribute* attribute = findAttributep(id, false);
    return attribute != nullptr ? attribute->getValue() : nullptr;
}

CElement::ElementMap::iterator CElement::findEntry(CElement* element) {
    auto range = ElementMap::equal_range(element->name);
    for (auto entry = range.first; entry != range.second; ++entry) {
        if (entry->second == element) return entry;
    }
    return ElementMap::end();
}

bool CElement::addElement(CElement* element) {
    if (element == nullptr || element == this) return false;
    if (element->parent == this && findEntry(element) != ElementMap::end()) return false;
    element->parent = this;
    ElementMap::emplace(element->name, element);
    return true;
}

CElement* CElement::getElementFromSeq(int n) const {
    if (n < 0 || n >= elementCount()) return nullptr;
    return std::next(ElementMap::begin(), n)->second;
}

CElement* CElement::findElementp(const std::string& elementName, bool create) {
    auto found = ElementMap::find(elementName);
    if (found != ElementMap::end()) return found->second;
    if (!create) return nullptr;
    auto* element = new CElement(elementName);
    addElement(element);
    return element;
}

bool CElement::detachElement(CElement* element) {
    auto entry = findEntry(element);
    if (entry == ElementMap::end()) return false;
    ElementMap::erase(entry);
    return true;
}

bool CElement::removeElement(CElement* element) {
    if (element == nullptr || !detachElement(element)) return false;
    element->parent = nullptr;
    delete element;
    return true;
}

bool CElement::setAttributeDisplayEditTextDropBox(eAttrNameId id, bool showIt, bool editIt,
                                                  bool asText, bool asDropBox) {
    Attribute* attribute = findAttributep(id, false);
    if (attribute == nullptr) return false;
    attribute->setDisplayEditTextDropBox(showIt, editIt, asText, asDropBox);
    return true;
}

bool CElement::setAttributeDisplayFilenameEdit(eAttrNameId id) {
    if (!setAttributeDisplayEditTextDropBox(id, true, true, false, false)) return false;
    findAttributep(id, false)->setFilenameChooser(true);
    return true;
}

bool CElement::setAttributeDisplayDirectoryEdit(eAttrNameId id) {
    if (!setAttributeDisplayEditTextDropBox(id, true, true, false, false)) return false;
    findAttributep(id, false)->setDirectoryChooser(true);
    return true;
}

bool CElement::clearAttributeOptions(eAttrNameId id) {
    Attribute* attribute = findAttributep(id, false);
    if (attribute == nullptr) return false;
    attribute->ClearOptions();
    return true;
}

bool CElement::addAttributeOption(eAttrNameId id, const std::string& option) {
    Attribute* attribute = findAttributep(id, false);
    return attribute != nullptr && attribute->AddOption(option);
}

void CElement::copyContentFrom(const CElement& source) {
    for (const auto& entry : source.attributes()) addAttribute(new Attribute(*entry.second));
    for (const auto& entry : source.elements()) {
        auto* copy = new CElement(entry.second->name);
        copy->comment = entry.second->comment;
        copy->copyContentFrom(*entry.second);
        addElement(copy);
    }
}

bool CElement::duplicate(CElement* other) {
    if (other == nullptr) return false;
    if (other == this) return true;
    // Copied aside first: other may lie below this element and go with Empty.
    CElement copy(other->name);
    copy.comment = other->comment;
    copy.copyContentFrom(*other);
    Empty();
    setName(copy.name);
    comment = copy.comment;
    AttributeMap::swap(copy);
    ElementMap::swap(copy);
    for (const auto& entry : elements()) entry.second->parent = this;
    return true;
}

void CElement::print(int indent) {
    std::string margin(indent > 0 ? indent : 0, ' ');
    NexoBase::log(logStatus) << margin << (comment ? "<!--" : "<") << name
                             << (comment ? "-->" : ">") << "\n";
    for (const auto& entry : attributes()) entry.second->print(indent + 2);
    for (const auto& entry : elements()) entry.second->print(indent + 2);
}

bool CElement::write(XmlWrapper* wrapper) {
    if (wrapper == nullptr) return false;
    if (comment) return wrapper->addComment(name.c_str());
    if (!wrapper->nextElement(name.c_str())) return false;
    bool written = true;
    for (const auto& entry : attributes()) {
        if (!IsValidAttrNameId(entry.first)) continue;
        written = wrapper->addAttribute(Attribute::attFILEStrings[entry.first].c_str(),
                                        entry.second->getValue()) &&
                  written;
    }
    for (const auto& entry : elements()) {
        wrapper->startSubElements();
        written = entry.second->write(wrapper) && written;
        wrapper->finishSubElements();
    }
    return written;
}

bool CElement::read(XmlWrapper* wrapper) {
    if (wrapper == nullptr || !wrapper->hasCurrent()) return false;
    setName(wrapper->getElementValue());
    for (; wrapper->attributeExists(); wrapper->nextAttribute()) {
        eAttrNameId id = A_UNK;
        if (Attribute::FileStringToId(wrapper->getAttributeName(), id)) {
            addAttribute(new Attribute(id, wrapper->getAttributeValue()));
        }
    }
    if (wrapper->isComment()) comment = true;
    if (!wrapper->hasChildren()) return true;
    bool complete = wrapper->startChildren();
    do {
        auto* element = new CElement();
        complete = element->read(wrapper) && complete;
        addElement(element);
    } while (wrapper->currentHasNextSibling() && wrapper->nextElement());
    wrapper->finishChildren();
    return complete;
}

bool CElement::equalTo(CElement* other) {
    if (other == nullptr || other->name != name) return false;
    if (other->attributeCount() != attributeCount()) return false;
    if (other->elementCount() != elementCount()) return false;
    auto otherAttribute = other->attributes().begin();
    for (const auto& entry : attributes()) {
        if (!entry.second->equalTo((otherAttribute++)->second)) return false;
    }
    auto otherElement = other->elements().begin();
    for (const auto& entry : elements()) {
        if (!entry.second->equalTo((otherElement++)->second)) return false;
    }
    return true;
}

void CElement::Empty() {
    ElementMap subElements;
    ElementMap::swap(subElements);
    for (const auto& entry : subElements) {
        entry.second->parent = nullptr;
        delete entry.second;
    }
    for (const auto& entry : attributes()) delete entry.second;
    AttributeMap::clear();
}
