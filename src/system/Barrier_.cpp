#include "system/Barrier_.h"

#include "system/SystemToXML.h"
#include "system/XmlAttributeReader.h"
#include "system/XmlAttributeWriter.h"

namespace {

template <typename Barrier, typename Visit>
void BarrierAttributes(Barrier& barrier, Visit& visit) {
    visit("height_lower", barrier.height_lower);
    visit("height_upper", barrier.height_upper);
    visit("thickness", barrier.thickness);
    visit("medium", barrier.medium);
}

}  // namespace

Barrier_::Barrier_(e_Barrier_* record) : SystemWrapper(record) {}

bool Barrier_::ToXML(tinyxml2::XMLElement* element) const {
    if (!CheckElement(record, element, nullptr, "Barrier_::ToXML() failed")) return false;
    XmlAttributeWriter write(element);
    BarrierAttributes(*record, write);
    ObjToXML(record->vectors, element);
    return true;
}

bool Barrier_::FromXML(tinyxml2::XMLElement* element) {
    if (!CheckElement(record, element, "Barrier_", "Barrier_::FromXML() failed")) return false;
    XmlAttributeReader read(element);
    BarrierAttributes(*record, read);
    return linkedListFromXML(&record->vectors, element);
}
