#pragma once

#include "system/SystemRecords.h"
#include "system/SystemWrapper.h"

// An access point in the wrappers' dialect: element "AP_" with "channel", "power",
// "size", "gain", "radPattern", "gainBeamWidth", "gainBeamHeight", "rotateVertical",
// "rotateHorizontal" and its location as the child "Vector_".
class AccessPoint_ : public SystemWrapper<e_AccessPoint_> {
  public:
    explicit AccessPoint_(e_AccessPoint_* record);

    bool ToXML(tinyxml2::XMLElement* element) const override;
    // Fails on an element not named "AP_".
    bool FromXML(tinyxml2::XMLElement* element) override;
};
