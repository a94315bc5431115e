#include "documents/ElementGroup.h"

#include <algorithm>
#include <functional>

#include "control/OpticElement.h"
#include "logging/Log.h"
#include "radiation/EMRadiation.h"

namespace {

// Runs the stage on every element; true when any of them reported something.
bool ForEachElement(std::vector<OpticElement*>& elements,
                    const std::function<bool(OpticElement*)>& stage) {
    bool any = false;
    for (OpticElement* element : elements) any = stage(element) || any;
    return any;
}

}  // namespace

ElementGroup::ElementGroup() { objTypeStr = "ElementGroup"; }

bool ElementGroup::Empty() {
    Groups::clear();
    Elements::clear();
    Radiation::clear();
    return Component::Empty();
}

bool ElementGroup::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    bool loaded = LoadVectorByType<OpticElement>(this, element, "OpticElement");
    return LoadVectorByType<EMRadiation>(this, element, "EMRadiation") && loaded;
}

bool ElementGroup::ToXml(CElement* element, bool leaveOutExpanded) {
    return SimObject::ToXml(element, leaveOutExpanded);
}

bool ElementGroup::CheckEq(ElementGroup* other) {
    if (other == nullptr) return false;
    if (Elements::size() != other->Elements::size() ||
        Radiation::size() != other->Radiation::size()) {
        Log::log(1) << "ElementGroup::CheckEq: " << objName << " differs in its counts\n";
        return false;
    }
    return Component::CheckEq(static_cast<Component*>(other));
}

void ElementGroup::Print() {
    Log::log(4) << objTypeStr << " " << objName << ": " << Elements::size() << " elements, "
                << Radiation::size() << " radiation, " << Groups::size() << " groups\n";
    Component::Print();
}

bool ElementGroup::ResetDetection() {
    return ForEachElement(*this, [](OpticElement* e) { return e->ResetDetection(); });
}

bool ElementGroup::TransmitSourceToVolume() {
    bool any = ForEachElement(*this, [](OpticElement* e) { return e->TransmitSourceToVolume(); });
    for (ElementGroup* group : static_cast<Groups&>(*this)) {
        any = group->TransmitSourceToVolume() || any;
    }
    return any;
}

bool ElementGroup::TransmitVolumeToInterface(std::vector<EMRadiation*>* out) {
    return ForEachElement(*this,
                          [out](OpticElement* e) { return e->TransmitVolumeToInterface(out); });
}

bool ElementGroup::TransmitInterfaceToVolume() {
    return ForEachElement(*this, [](OpticElement* e) { return e->TransmitInterfaceToVolume(); });
}

bool ElementGroup::ClearReceivedRadiation() {
    return ForEachElement(*this, [](OpticElement* e) { return e->ClearReceivedRadiation(); });
}

bool ElementGroup::InitialTransmit(bool reset) {
    return ForEachElement(*this, [reset](OpticElement* e) { return e->InitialTransmit(reset); });
}

bool ElementGroup::RemoveElement(OpticElement* element) {
    auto found = std::find(Elements::begin(), Elements::end(), element);
    if (found == Elements::end()) {
        Log::log(1) << "ElementGroup::RemoveElement: not an element of " << objName << "\n";
        return false;
    }
    Elements::erase(found);
    return RemoveChild(element, true);
}
