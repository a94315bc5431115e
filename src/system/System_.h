#pragma once

#include <string>

#include "system/SystemRecords.h"
#include "system/SystemWrapper.h"

// The wrapper that holds a whole system. While it exists the record's `held` flag is
// set, so that DeleteSystem leaves the record alone (a message may carry it and release
// it without harm).
//
// The wrapper never frees the record and never clears `held`: its owner does both, then
// releases the record with DeleteSystem, before or after deleting the wrapper.
//
// Its dialect: element "System_" with "xMin", "xMax", "yMin", "yMax", "height",
// "floorMaterial", "floorThickness", "ceilingMaterial", "ceilingThickness", the
// "Barrier_", "AP_", "SP_" and "Furniture_" elements of its lists, and "only2d".
// Furniture elements are empty, since furniture has no form in this dialect; they are
// written and read back as furniture records with their defaults.
class System_ : public SystemWrapper<e_System_> {
  public:
    explicit System_(e_System_* record);

    bool ToXML(tinyxml2::XMLElement* element) const override;
    // Fails on an element not named "System_"; lists are appended to.
    bool FromXML(tinyxml2::XMLElement* element) override;

    // The system as XML text in this dialect, through the wrapper's document.
    bool ToXMLText(std::string& text);
    bool FromXMLText(std::string& text);

    e_System_* GetSystem() const { return record; }
};
