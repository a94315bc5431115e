#include "system/Vector_.h"

#include "system/XmlAttributeReader.h"
#include "system/XmlAttributeWriter.h"

namespace {

template <typename Vector, typename Visit>
void VectorAttributes(Vector& vector, Visit& visit) {
    visit("x", vector.x);
    visit("y", vector.y);
    visit("z", vector.z);
}

}  // namespace

Vector_::Vector_(e_Vector_* record) : SystemWrapper(record) {}

bool Vector_::ToXML(tinyxml2::XMLElement* element) const {
    if (!CheckElement(record, element, nullptr, "Vector_::ToXML() failed")) return false;
    XmlAttributeWriter write(element);
    VectorAttributes(*record, write);
    return true;
}

bool Vector_::FromXML(tinyxml2::XMLElement* element) {
    if (!CheckElement(record, element, nullptr, "Vector_::FromXML() failed")) return false;
    XmlAttributeReader read(element);
    VectorAttributes(*record, read);
    return true;
}

bool Vector_::ChildToXML(e_Vector_* vector, tinyxml2::XMLElement* parent) {
    return parent != nullptr && Vector_(vector).ToXML(parent->InsertNewChildElement("Vector_"));
}

bool Vector_::ChildFromXML(e_Vector_* vector, tinyxml2::XMLElement* parent) {
    if (parent == nullptr) return false;
    tinyxml2::XMLElement* child = parent->FirstChildElement("Vector_");
    return child == nullptr || Vector_(vector).FromXML(child);
}
