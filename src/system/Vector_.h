#pragma once

#include "system/SystemRecords.h"
#include "system/SystemWrapper.h"

// A vector in the wrappers' dialect: element "Vector_" with "x", "y", "z".
class Vector_ : public SystemWrapper<e_Vector_> {
  public:
    explicit Vector_(e_Vector_* record);

    bool ToXML(tinyxml2::XMLElement* element) const override;
    // Reads "x", "y", "z"; the coordinate system is left as it is.
    bool FromXML(tinyxml2::XMLElement* element) override;

    // An embedded vector as the child "Vector_" of `parent`; reading without such a
    // child leaves the vector as it is.
    static bool ChildToXML(e_Vector_* vector, tinyxml2::XMLElement* parent);
    static bool ChildFromXML(e_Vector_* vector, tinyxml2::XMLElement* parent);
};
