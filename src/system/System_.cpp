#include "system/System_.h"

#include "system/AccessPoint_.h"
#include "system/Barrier_.h"
#include "system/Furniture_.h"
#include "system/SamplePoint_.h"
#include "system/SystemXmlDocument.h"
#include "system/XmlAttributeReader.h"
#include "system/XmlAttributeWriter.h"

using tinyxml2::XMLElement;

namespace {

template <typename System, typename Visit>
void SystemAttributes(System& system, Visit& visit) {
    visit("xMin", system.xMin);
    visit("xMax", system.xMax);
    visit("yMin", system.yMin);
    visit("yMax", system.yMax);
    visit("height", system.height);
    visit("floorMaterial", system.floorMaterial);
    visit("floorThickness", system.floorThickness);
    visit("ceilingMaterial", system.ceilingMaterial);
    visit("ceilingThickness", system.ceilingThickness);
}

template <typename Wrapper, typename Record>
bool WrappedListToXML(Record* list, XMLElement* parent, const char* name) {
    bool ok = true;
    for (; list != nullptr; list = list->next) {
        ok = Wrapper(list).ToXML(parent->InsertNewChildElement(name)) && ok;
    }
    return ok;
}

template <typename Wrapper>
bool WrappedListFromXML(e_System_* system, XMLElement* parent, const char* name) {
    bool ok = true;
    for (XMLElement* child = parent->FirstChildElement(name); child != nullptr;
         child = child->NextSiblingElement(name)) {
        typename Wrapper::RecordType* item = nullptr;
        NewPiece(&item, system);
        if (item == nullptr) return false;
        ok = Wrapper(item).FromXML(child) && ok;
    }
    return ok;
}

}  // namespace

System_::System_(e_System_* record) : SystemWrapper(record) {
    if (record != nullptr) record->held = true;
}

bool System_::ToXML(XMLElement* element) const {
    if (!CheckElement(record, element, nullptr, "System_::ToXML() failed")) return false;
    XmlAttributeWriter write(element);
    SystemAttributes(*record, write);
    bool ok = WrappedListToXML<Barrier_>(record->barriers, element, "Barrier_");
    ok = WrappedListToXML<AccessPoint_>(record->accessPoints, element, "AP_") && ok;
    ok = WrappedListToXML<SamplePoint_>(record->samplePoints, element, "SP_") && ok;
    // Furniture_ writes nothing and says so; its empty elements do not fail the system.
    WrappedListToXML<Furniture_>(record->furniture, element, "Furniture_");
    write("only2d", record->only2d);
    return ok;
}

bool System_::FromXML(XMLElement* element) {
    if (!CheckElement(record, element, "System_", "System_::FromXML() failed")) return false;
    XmlAttributeReader read(element);
    SystemAttributes(*record, read);
    read("only2d", record->only2d);
    bool ok = WrappedListFromXML<Barrier_>(record, element, "Barrier_");
    ok = WrappedListFromXML<AccessPoint_>(record, element, "AP_") && ok;
    ok = WrappedListFromXML<SamplePoint_>(record, element, "SP_") && ok;
    // Each furniture element still becomes a furniture record, which Furniture_ leaves
    // at its defaults.
    WrappedListFromXML<Furniture_>(record, element, "Furniture_");
    return ok;
}

bool System_::ToXMLText(std::string& text) {
    SystemXmlDocument* document = GetDocument();
    bool written = ToXML(document->NewRoot("System_"));
    document->ToText(text);
    return written;
}

bool System_::FromXMLText(std::string& text) {
    SystemXmlDocument* document = GetDocument();
    return document->FromText(text, "System_::FromXMLText()") && FromXML(document->RootElement());
}
