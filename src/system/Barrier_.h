#pragma once

#include "system/SystemRecords.h"
#include "system/SystemWrapper.h"

// A wall in the wrappers' dialect: element "Barrier_" with "height_lower",
// "height_upper", "thickness", "medium" and its corners as the "Vector_" list of the
// records' own XML ("v1", "v2", "v3", "coord").
class Barrier_ : public SystemWrapper<e_Barrier_> {
  public:
    explicit Barrier_(e_Barrier_* record);

    bool ToXML(tinyxml2::XMLElement* element) const override;
    // Fails on an element not named "Barrier_"; corners are appended.
    bool FromXML(tinyxml2::XMLElement* element) override;
};
