#include "system/Furniture_.h"

Furniture_::Furniture_(e_Furniture_* record) : SystemWrapper(record) {}

bool Furniture_::ToXML(tinyxml2::XMLElement*) const { return false; }

bool Furniture_::FromXML(tinyxml2::XMLElement*) { return false; }
