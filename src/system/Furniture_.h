#pragma once

#include "system/SystemRecords.h"
#include "system/SystemWrapper.h"

// Furniture has no form in the wrappers' dialect: reading and writing do nothing.
class Furniture_ : public SystemWrapper<e_Furniture_> {
  public:
    explicit Furniture_(e_Furniture_* record);

    // Both give false.
    bool ToXML(tinyxml2::XMLElement* element) const override;
    bool FromXML(tinyxml2::XMLElement* element) override;
};
