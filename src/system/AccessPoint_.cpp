#include "system/AccessPoint_.h"

#include "system/Vector_.h"
#include "system/XmlAttributeReader.h"
#include "system/XmlAttributeWriter.h"

namespace {

template <typename AccessPoint, typename Visit>
void AccessPointAttributes(AccessPoint& accessPoint, Visit& visit) {
    visit("channel", accessPoint.channel);
    visit("power", accessPoint.power);
    visit("size", accessPoint.size);
    visit("gain", accessPoint.gain);
    visit("radPattern", accessPoint.radPattern);
    visit("gainBeamWidth", accessPoint.gainBeamWidth);
    visit("gainBeamHeight", accessPoint.gainBeamHeight);
    visit("rotateVertical", accessPoint.rotateVertical);
    visit("rotateHorizontal", accessPoint.rotateHorizontal);
}

}  // namespace

AccessPoint_::AccessPoint_(e_AccessPoint_* record) : SystemWrapper(record) {}

bool AccessPoint_::ToXML(tinyxml2::XMLElement* element) const {
    if (!CheckElement(record, element, nullptr, "AccessPoint_::ToXML() failed")) return false;
    XmlAttributeWriter write(element);
    AccessPointAttributes(*record, write);
    return Vector_::ChildToXML(&record->location, element);
}

bool AccessPoint_::FromXML(tinyxml2::XMLElement* element) {
    if (!CheckElement(record, element, "AP_", "AccessPoint_::FromXML() failed")) return false;
    XmlAttributeReader read(element);
    AccessPointAttributes(*record, read);
    return Vector_::ChildFromXML(&record->location, element);
}
