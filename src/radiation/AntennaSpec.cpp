#include "radiation/AntennaSpec.h"

#include "logging/Log.h"

AntennaSpec::AntennaSpec(const char* name) {
    objTypeStr = "AntennaSpec";
    if (name != nullptr) SetName(name);
}

// The element's type attribute is the class name, written with the object's own attributes.
bool AntennaSpec::ToXml(CElement* element, bool leaveOutExpanded) {
    Log::log(OUTPUT_INFORMATIVE) << "AntennaSpec::ToXml\n";
    return SimObject::ToXml(element, leaveOutExpanded);
}
