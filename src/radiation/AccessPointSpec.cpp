#include "radiation/AccessPointSpec.h"

#include "logging/Log.h"

AccessPointSpec::AccessPointSpec(const char* name) {
    objTypeStr = "AccessPointSpec";
    if (name != nullptr) SetName(name);
}

// The element's type attribute is the class name, written with the object's own attributes.
bool AccessPointSpec::ToXml(CElement* element, bool leaveOutExpanded) {
    Log::log(OUTPUT_INFORMATIVE) << "AccessPointSpec::ToXml\n";
    return SimObject::ToXml(element, leaveOutExpanded);
}
