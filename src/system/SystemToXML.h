#pragma once

#include <tinyxml2.h>

#include <string>

#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"
#include "system/SystemRecords.h"

// The XML form of the system records: the system file and the wire payload.
// Writers append attributes and children to the given element.

void ObjToXML(const e_Vector_* list, tinyxml2::XMLElement* parent, const char* name = nullptr);
void ObjToXML(const e_Barrier_* barrier, tinyxml2::XMLElement* element);
void ObjToXML(const e_Building_* building, tinyxml2::XMLElement* element);
void ObjToXML(const e_Furniture_* furniture, tinyxml2::XMLElement* element);
void ObjToXML(const e_AccessPoint_* accessPoint, tinyxml2::XMLElement* element);
void ObjToXML(const e_ReceivedSignal_* signal, tinyxml2::XMLElement* element);
void ObjToXML(const e_SamplePoint_* samplePoint, tinyxml2::XMLElement* element);
void ObjToXML(const e_System_* system, tinyxml2::XMLElement* element);
void ObjToXML(const AccessPointOption* option, tinyxml2::XMLElement* element);
void ObjToXML(const AntennaOption* option, tinyxml2::XMLElement* element);

// Appends one element per list member under `parent`, named `name` or, without one, by
// the record's own element name ("Barrier_", "Building_", "Furniture_", "AP_", "SP_",
// "signal", "Vector_").
template <typename T>
void ListToXML(const T* list, tinyxml2::XMLElement* parent, const char* name = nullptr);

// Readers fill `record` from `element`; `system` receives records that the element's
// lists append (the record itself when `system` is null). A missing attribute leaves the
// record's value. A null element or record writes a complaint to standard error and
// gives false. Vectors need all of "v1", "v2", "v3" and "coord", signals their "apName":
// without them that vector or signal is left out and the read gives false.
bool ObjFromXML(e_System_* system, e_System_* record, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_Vector_* vector, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_Barrier_* barrier, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_Building_* building, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_Furniture_* furniture, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_AccessPoint_* accessPoint, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_ReceivedSignal_* signal, const tinyxml2::XMLElement* element);
bool ObjFromXML(e_SamplePoint_* samplePoint, const tinyxml2::XMLElement* element);

// Reads every child of `parent` named `name`, in file order, each into a record that
// NewPiece appends to `system`. T is one of the system's list records.
template <typename T>
bool ListFromXML(e_System_* system, const tinyxml2::XMLElement* parent, const char* name);
// The same for the lists that hang below a record: vectors appended to `*list`, signals
// appended to the sample point.
bool linkedListFromXML(e_Vector_** list, const tinyxml2::XMLElement* parent,
                       const char* name = "Vector_");
bool linkedListFromXML(e_SamplePoint_* samplePoint, const tinyxml2::XMLElement* parent,
                       const char* name = "signal");
bool ObjFromXML(AccessPointOption* option, const tinyxml2::XMLElement* element);
bool ObjFromXML(AntennaOption* option, const tinyxml2::XMLElement* element);

// A catalogue row as a whole XML text with root "AP" or "ANT", and back.
bool ObjToString(const AccessPointOption* option, std::string& text);
bool ObjToString(const AntennaOption* option, std::string& text);
bool ObjFromString(AccessPointOption* option, const std::string& text);
bool ObjFromString(AntennaOption* option, const std::string& text);

bool FilehasSystem(const char* file);
bool SystemFromFile(e_System_* system, const char* file);
bool SystemToFile(const e_System_* system, const char* file);
bool SystemToString(const e_System_* system, std::string& text);
bool SystemToCSV(const e_System_* system, const char* file);
