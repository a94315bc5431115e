#include "system/SystemToXML.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <vector>

#include "logging/Log.h"
#include "system/SystemXmlDocument.h"
#include "system/XmlAttributeReader.h"
#include "system/XmlAttributeWriter.h"

using tinyxml2::XMLElement;

namespace {

// Geographic vectors carry longitude and latitude times this factor in "v1" and "v2".
constexpr double kGeoFactor = 10000;

// Attribute lists, one per record, in the order of the XML. Each takes the record (const
// for writing) and an XmlAttributeWriter or XmlAttributeReader.

struct BarrierAttributes {
    template <typename Barrier, typename Visit>
    void operator()(Barrier& barrier, Visit& visit) const {
        visit("height_lower", barrier.height_lower);
        visit("height_upper", barrier.height_upper);
        visit.zeroIfMissing("thickness", barrier.thickness);
        visit("medium", barrier.medium);
        visit("vertical", barrier.vertical);
        visit("thinBarrier", barrier.thinBarrier);
        visit("reflect", barrier.reflect);
        visit("transmit", barrier.transmit);
    }
};

struct BuildingAttributes {
    template <typename Building, typename Visit>
    void operator()(Building& building, Visit& visit) const {
        visit("height", building.height);
        visit("levelCount", building.levelCount);
        visit("wallThickness", building.wallThickness);
        visit("wallMedium", building.wallMedium);
        visit("roofThickness", building.roofThickness);
        visit("roofMedium", building.roofMedium);
        visit("floorThickness", building.floorThickness);
        visit("floorMedium", building.floorMedium);
        visit("thinBarrier", building.thinBarrier);
        visit("reflect", building.reflect);
        visit("transmit", building.transmit);
    }
};

struct FurnitureAttributes {
    template <typename Furniture, typename Visit>
    void operator()(Furniture& furniture, Visit& visit) const {
        visit("type", furniture.type);
        visit("length", furniture.length);
        visit("width", furniture.width);
        visit("height", furniture.height);
    }
};

struct AccessPointAttributes {
    template <typename AccessPoint, typename Visit>
    void operator()(AccessPoint& accessPoint, Visit& visit) const {
        visit("name", accessPoint.name);
        visit("channel", accessPoint.channel);
        visit.writeOnly("frequency_GHz", accessPoint.frequency_GHz);
        visit("power", accessPoint.power);
        visit("size", accessPoint.size);
        visit("gain", accessPoint.gain);
        visit("radPattern", accessPoint.radPattern);
        visit("gainBeamWidth", accessPoint.gainBeamWidth);
        visit("gainBeamHeight", accessPoint.gainBeamHeight);
        visit("rotateVertical", accessPoint.rotateVertical);
        visit("rotateHorizontal", accessPoint.rotateHorizontal);
    }
};

struct SignalAttributes {
    template <typename Signal, typename Visit>
    void operator()(Signal& signal, Visit& visit) const {
        visit("apName", signal.apName);
        visit("receivedPower_dBW", signal.receivedPower_dBW);
        visit("receivedPower_dBm", signal.receivedPower_dBm);
        visit("receivedPathLoss_dB", signal.receivedPathLoss_dB);
        visit("expectedPower_dBm", signal.expectedPower_dBm);
        visit("expectedPathLoss_dB", signal.expectedPathLoss_dB);
        visit("receivedPathCount", signal.receivedPathCount);
    }
};

struct SamplePointAttributes {
    template <typename SamplePoint, typename Visit>
    void operator()(SamplePoint& samplePoint, Visit& visit) const {
        visit("name", samplePoint.name);
        visit("size", samplePoint.size);
        visit("gain", samplePoint.gain);
        visit("simElementID", samplePoint.simElementID);
    }
};

// The system's attributes down to "loadTerrain", which stand before its buildings.
struct SystemLeadingAttributes {
    template <typename System, typename Visit>
    void operator()(System& system, Visit& visit) const {
        visit("isIndoorOnly", system.isIndoorOnly);
        visit("xMin", system.xMin);
        visit("xMax", system.xMax);
        visit("yMin", system.yMin);
        visit("yMax", system.yMax);
        visit("height", system.height);
        visit("ceilingMaterial", system.ceilingMaterial);
        visit("ceilingThickness", system.ceilingThickness);
        visit("floorThickness", system.floorThickness);
        visit("lonMin", system.lonMin);
        visit("lonMax", system.lonMax);
        visit("latMin", system.latMin);
        visit("latMax", system.latMax);
        visit.writeOnly("osmFile", system.osmFile);
        visit.nonEmpty("osmContent", system.osmContent);
        visit("loadBuildings", system.loadBuildings);
        visit("loadRoads", system.loadRoads);
        visit("loadSignals", system.loadSignals);
        visit("loadTrees", system.loadTrees);
        visit("loadTerrain", system.loadTerrain);
    }
};

// The system's attributes after its lists.
struct SystemTrailingAttributes {
    template <typename System, typename Visit>
    void operator()(System& system, Visit& visit) const {
        visit("only2d", system.only2d);
        visit("pathLoss_model", system.pathLoss_model);
        visit("pathLoss_Exp", system.pathLoss_Exp);
        visit("rayGap", system.rayGap);
        visit("traceLimit", system.traceLimit);
        visit("reflect", system.reflect);
        visit("transmit", system.transmit);
        visit("failPowerValue", system.failPowerValue);
    }
};

struct OptionAttributes {
    template <typename Option, typename Visit>
    void operator()(Option& option, Visit& visit) const {
        visit("brand", option.brand);
        visit("name", option.name);
        visit("description", option.description);
        visit("link", option.link);
    }
};

const char* DefaultName(const e_Vector_*) { return "Vector_"; }
const char* DefaultName(const e_Barrier_*) { return "Barrier_"; }
const char* DefaultName(const e_Building_*) { return "Building_"; }
const char* DefaultName(const e_Furniture_*) { return "Furniture_"; }
const char* DefaultName(const e_AccessPoint_*) { return "AP_"; }
const char* DefaultName(const e_ReceivedSignal_*) { return "signal"; }
const char* DefaultName(const e_SamplePoint_*) { return "SP_"; }

void VectorToXML(const e_Vector_* vector, XMLElement* element) {
    bool geographic = vector->coordSystem == 1;
    element->SetAttribute("v1", geographic ? vector->lon * kGeoFactor : vector->x);
    element->SetAttribute("v2", geographic ? vector->lat * kGeoFactor : vector->y);
    element->SetAttribute("v3", geographic ? vector->height : vector->z);
    element->SetAttribute("coord", vector->coordSystem);
}

// A list member's own content: vectors have no ObjToXML of their own.
void ItemToXML(const e_Vector_* vector, XMLElement* element) { VectorToXML(vector, element); }
template <typename T>
void ItemToXML(const T* record, XMLElement* element) {
    ObjToXML(record, element);
}

// An embedded vector is written as a one-element list under its own name.
void EmbeddedVectorToXML(const e_Vector_& vector, XMLElement* parent, const char* name) {
    VectorToXML(&vector, parent->InsertNewChildElement(name));
}

// An embedded vector is read from the first child of that name, if there is one.
bool EmbeddedVectorFromXML(e_Vector_& vector, const XMLElement* parent, const char* name) {
    const XMLElement* child = parent->FirstChildElement(name);
    return child == nullptr || ObjFromXML(&vector, child);
}

bool CheckReadTarget(const void* record, const XMLElement* element) {
    const char* complaint = nullptr;
    if (element == nullptr) {
        complaint = "ObjFromXML() failed - no root element to load from\n";
    } else if (record == nullptr) {
        complaint = "ObjFromXML() failed - obj == NULL\n";
    }
    if (complaint == nullptr) return true;
    std::cerr << complaint;
    Log::log(1) << complaint;
    return false;
}

template <typename Record, typename Attributes>
void WriteAttributes(const Record* record, XMLElement* element, Attributes attributes) {
    XmlAttributeWriter write(element);
    attributes(*record, write);
}

template <typename Record, typename Attributes>
bool ReadAttributes(Record* record, const XMLElement* element, Attributes attributes) {
    if (!CheckReadTarget(record, element)) return false;
    XmlAttributeReader read(element);
    attributes(*record, read);
    return true;
}

void NumbersToXML(const std::vector<double>& values, XMLElement* parent, const char* name) {
    if (values.empty()) return;
    XMLElement* list = parent->InsertNewChildElement(name);
    for (double value : values)
        list->InsertNewChildElement("listValue")->SetAttribute("val", value);
}

void NumbersToXML(const std::map<double, double>& values, XMLElement* parent, const char* name) {
    if (values.empty()) return;
    XMLElement* map = parent->InsertNewChildElement(name);
    for (const auto& [key, value] : values) {
        XMLElement* entry = map->InsertNewChildElement("listValue");
        entry->SetAttribute("key", key);
        entry->SetAttribute("val", value);
    }
}

// Calls read(entry) for each "listValue" child of the child `name`; an entry that read
// rejects is left out and makes the result false.
template <typename ReadEntry>
bool NumbersFromXML(const XMLElement* parent, const char* name, ReadEntry read) {
    const XMLElement* list = parent->FirstChildElement(name);
    if (list == nullptr) return true;
    bool ok = true;
    for (const XMLElement* entry = list->FirstChildElement("listValue"); entry != nullptr;
         entry = entry->NextSiblingElement("listValue")) {
        if (read(entry)) continue;
        Log::log(1) << "ObjFromXML() failed - malformed entry in \"" << name << "\"\n";
        ok = false;
    }
    return ok;
}

bool NumbersFromXML(std::vector<double>& values, const XMLElement* parent, const char* name) {
    return NumbersFromXML(parent, name, [&values](const XMLElement* entry) {
        double value = 0;
        if (entry->QueryDoubleAttribute("val", &value) != tinyxml2::XML_SUCCESS) return false;
        values.push_back(value);
        return true;
    });
}

bool NumbersFromXML(std::map<double, double>& values, const XMLElement* parent, const char* name) {
    return NumbersFromXML(parent, name, [&values](const XMLElement* entry) {
        double key = 0;
        double value = 0;
        if (entry->QueryDoubleAttribute("key", &key) != tinyxml2::XML_SUCCESS ||
            entry->QueryDoubleAttribute("val", &value) != tinyxml2::XML_SUCCESS) {
            return false;
        }
        values[key] = value;
        return true;
    });
}

template <typename Option>
bool OptionToString(const Option* option, const char* rootName, std::string& text) {
    if (option == nullptr) {
        Log::log(1) << "ObjToString() failed - no option\n";
        return false;
    }
    SystemXmlDocument document;
    ObjToXML(option, document.NewRoot(rootName));
    document.ToText(text);
    return true;
}

template <typename Option>
bool OptionFromString(Option* option, const std::string& text) {
    if (option == nullptr) {
        Log::log(1) << "ObjFromString() failed - no option\n";
        return false;
    }
    SystemXmlDocument document;
    return document.FromText(text, "ObjFromString()") && ObjFromXML(option, document.RootElement());
}

}  // namespace

template <typename T>
void ListToXML(const T* list, XMLElement* parent, const char* name) {
    if (parent == nullptr) return;
    for (; list != nullptr; list = list->next) {
        ItemToXML(list, parent->InsertNewChildElement(name != nullptr ? name : DefaultName(list)));
    }
}

template void ListToXML(const e_Vector_*, XMLElement*, const char*);
template void ListToXML(const e_Barrier_*, XMLElement*, const char*);
template void ListToXML(const e_Building_*, XMLElement*, const char*);
template void ListToXML(const e_Furniture_*, XMLElement*, const char*);
template void ListToXML(const e_AccessPoint_*, XMLElement*, const char*);
template void ListToXML(const e_ReceivedSignal_*, XMLElement*, const char*);
template void ListToXML(const e_SamplePoint_*, XMLElement*, const char*);

void ObjToXML(const e_Vector_* list, XMLElement* parent, const char* name) {
    ListToXML(list, parent, name);
}

void ObjToXML(const e_Barrier_* barrier, XMLElement* element) {
    if (barrier == nullptr || element == nullptr) return;
    WriteAttributes(barrier, element, BarrierAttributes{});
    ListToXML(barrier->vectors, element);
}

void ObjToXML(const e_Building_* building, XMLElement* element) {
    if (building == nullptr || element == nullptr) return;
    WriteAttributes(building, element, BuildingAttributes{});
    ListToXML(building->vectors, element);
}

void ObjToXML(const e_Furniture_* furniture, XMLElement* element) {
    if (furniture == nullptr || element == nullptr) return;
    WriteAttributes(furniture, element, FurnitureAttributes{});
    EmbeddedVectorToXML(furniture->location, element, "location");
    EmbeddedVectorToXML(furniture->forward, element, "forward");
    EmbeddedVectorToXML(furniture->up, element, "up");
}

void ObjToXML(const e_AccessPoint_* accessPoint, XMLElement* element) {
    if (accessPoint == nullptr || element == nullptr) return;
    WriteAttributes(accessPoint, element, AccessPointAttributes{});
    EmbeddedVectorToXML(accessPoint->location, element, "location");
}

void ObjToXML(const e_ReceivedSignal_* signal, XMLElement* element) {
    if (signal == nullptr || element == nullptr) return;
    WriteAttributes(signal, element, SignalAttributes{});
}

void ObjToXML(const e_SamplePoint_* samplePoint, XMLElement* element) {
    if (samplePoint == nullptr || element == nullptr) return;
    WriteAttributes(samplePoint, element, SamplePointAttributes{});
    EmbeddedVectorToXML(samplePoint->location, element, "location");
    ListToXML(samplePoint->signals, element);
}

void ObjToXML(const e_System_* system, XMLElement* element) {
    if (system == nullptr || element == nullptr) return;
    XmlAttributeWriter write(element);
    SystemLeadingAttributes{}(*system, write);
    ListToXML(system->buildings, element);
    write("floorMaterial", system->floorMaterial);
    ListToXML(system->barriers, element);
    ListToXML(system->accessPoints, element);
    ListToXML(system->samplePoints, element);
    ListToXML(system->furniture, element);
    SystemTrailingAttributes{}(*system, write);
}

void ObjToXML(const AccessPointOption* option, XMLElement* element) {
    if (option == nullptr || element == nullptr) return;
    XmlAttributeWriter write(element);
    OptionAttributes{}(*option, write);
    write("standards", option->standards);
    write("antennaCount", option->antennaCount);
    NumbersToXML(option->frequencyBand, element, "frequencyBand");
    NumbersToXML(option->bandwidth, element, "bandwidth");
    NumbersToXML(option->power, element, "power");
    NumbersToXML(option->gain, element, "gain");
}

void ObjToXML(const AntennaOption* option, XMLElement* element) {
    if (option == nullptr || element == nullptr) return;
    XmlAttributeWriter write(element);
    OptionAttributes{}(*option, write);
    NumbersToXML(option->frequency, element, "frequency");
    NumbersToXML(option->hBeamWidth, element, "hBeamWidth");
    NumbersToXML(option->vBeamWidth, element, "vBeamWidth");
    NumbersToXML(option->gain, element, "gain");
}

bool ObjFromXML(e_Vector_* vector, const XMLElement* element) {
    if (!CheckReadTarget(vector, element)) return false;
    int coord = 0;
    double v1 = 0;
    double v2 = 0;
    double v3 = 0;
    if (element->QueryIntAttribute("coord", &coord) != tinyxml2::XML_SUCCESS ||
        element->QueryDoubleAttribute("v1", &v1) != tinyxml2::XML_SUCCESS ||
        element->QueryDoubleAttribute("v2", &v2) != tinyxml2::XML_SUCCESS ||
        element->QueryDoubleAttribute("v3", &v3) != tinyxml2::XML_SUCCESS) {
        Log::log(1) << "ObjFromXML() failed - \"" << element->Name()
                    << "\" needs numbers in v1, v2, v3 and coord\n";
        return false;
    }
    vector->coordSystem = coord;
    if (coord == 1) {
        vector->lon = v1 / kGeoFactor;
        vector->lat = v2 / kGeoFactor;
        vector->height = v3;
    } else {
        vector->x = v1;
        vector->y = v2;
        vector->z = v3;
    }
    return true;
}

bool ObjFromXML(e_Barrier_* barrier, const XMLElement* element) {
    return ReadAttributes(barrier, element, BarrierAttributes{}) &&
           linkedListFromXML(&barrier->vectors, element);
}

bool ObjFromXML(e_Building_* building, const XMLElement* element) {
    return ReadAttributes(building, element, BuildingAttributes{}) &&
           linkedListFromXML(&building->vectors, element);
}

bool ObjFromXML(e_Furniture_* furniture, const XMLElement* element) {
    // Only the location is read: forward and up keep what the record has.
    return ReadAttributes(furniture, element, FurnitureAttributes{}) &&
           EmbeddedVectorFromXML(furniture->location, element, "location");
}

bool ObjFromXML(e_AccessPoint_* accessPoint, const XMLElement* element) {
    return ReadAttributes(accessPoint, element, AccessPointAttributes{}) &&
           EmbeddedVectorFromXML(accessPoint->location, element, "location");
}

bool ObjFromXML(e_ReceivedSignal_* signal, const XMLElement* element) {
    return ReadAttributes(signal, element, SignalAttributes{});
}

bool ObjFromXML(e_SamplePoint_* samplePoint, const XMLElement* element) {
    if (!ReadAttributes(samplePoint, element, SamplePointAttributes{})) {
        return false;
    }
    bool locationRead = EmbeddedVectorFromXML(samplePoint->location, element, "location");
    return linkedListFromXML(samplePoint, element) && locationRead;
}

bool ObjFromXML(e_System_* system, e_System_* record, const XMLElement* element) {
    if (!CheckReadTarget(record, element)) return false;
    XmlAttributeReader read(element);
    SystemLeadingAttributes{}(*record, read);
    read("floorMaterial", record->floorMaterial);
    SystemTrailingAttributes{}(*record, read);
    e_System_* owner = system != nullptr ? system : record;
    bool ok = ListFromXML<e_Building_>(owner, element, "Building_");
    ok = ListFromXML<e_Barrier_>(owner, element, "Barrier_") && ok;
    ok = ListFromXML<e_AccessPoint_>(owner, element, "AP_") && ok;
    ok = ListFromXML<e_SamplePoint_>(owner, element, "SP_") && ok;
    return ListFromXML<e_Furniture_>(owner, element, "Furniture_") && ok;
}

bool ObjFromXML(AccessPointOption* option, const XMLElement* element) {
    if (!CheckReadTarget(option, element)) return false;
    XmlAttributeReader read(element);
    OptionAttributes{}(*option, read);
    read("standards", option->standards);
    read("antennaCount", option->antennaCount);
    bool ok = NumbersFromXML(option->frequencyBand, element, "frequencyBand");
    ok = NumbersFromXML(option->bandwidth, element, "bandwidth") && ok;
    ok = NumbersFromXML(option->power, element, "power") && ok;
    return NumbersFromXML(option->gain, element, "gain") && ok;
}

bool ObjFromXML(AntennaOption* option, const XMLElement* element) {
    if (!CheckReadTarget(option, element)) return false;
    XmlAttributeReader read(element);
    OptionAttributes{}(*option, read);
    bool ok = NumbersFromXML(option->frequency, element, "frequency");
    ok = NumbersFromXML(option->hBeamWidth, element, "hBeamWidth") && ok;
    ok = NumbersFromXML(option->vBeamWidth, element, "vBeamWidth") && ok;
    return NumbersFromXML(option->gain, element, "gain") && ok;
}

template <typename T>
bool ListFromXML(e_System_* system, const XMLElement* parent, const char* name) {
    bool ok = true;
    for (const XMLElement* child = parent->FirstChildElement(name); child != nullptr;
         child = child->NextSiblingElement(name)) {
        T* record = nullptr;
        NewPiece(&record, system);
        if (record == nullptr) return false;
        ok = ObjFromXML(record, child) && ok;
    }
    return ok;
}

template bool ListFromXML<e_Barrier_>(e_System_*, const XMLElement*, const char*);
template bool ListFromXML<e_Building_>(e_System_*, const XMLElement*, const char*);
template bool ListFromXML<e_Furniture_>(e_System_*, const XMLElement*, const char*);
template bool ListFromXML<e_AccessPoint_>(e_System_*, const XMLElement*, const char*);
template bool ListFromXML<e_SamplePoint_>(e_System_*, const XMLElement*, const char*);

bool linkedListFromXML(e_Vector_** list, const XMLElement* parent, const char* name) {
    if (list == nullptr || parent == nullptr) return false;
    e_Vector_** link = list;
    while (*link != nullptr) link = &(*link)->next;
    bool ok = true;
    for (const XMLElement* child = parent->FirstChildElement(name); child != nullptr;
         child = child->NextSiblingElement(name)) {
        e_Vector_ vector{};
        if (!ObjFromXML(&vector, child)) {
            ok = false;
            continue;
        }
        *link = static_cast<e_Vector_*>(std::malloc(sizeof(e_Vector_)));
        if (*link == nullptr) {
            Log::log(1) << "linkedListFromXML() failed - out of memory\n";
            return false;
        }
        **link = vector;
        link = &(*link)->next;
    }
    return ok;
}

bool linkedListFromXML(e_SamplePoint_* samplePoint, const XMLElement* parent, const char* name) {
    if (samplePoint == nullptr || parent == nullptr) return false;
    bool ok = true;
    for (const XMLElement* child = parent->FirstChildElement(name); child != nullptr;
         child = child->NextSiblingElement(name)) {
        const char* apName = child->Attribute("apName");
        if (apName == nullptr) {
            Log::log(1) << "ObjFromXML() failed - signal without apName left out\n";
            ok = false;
            continue;
        }
        e_ReceivedSignal_* signal = NewReceivedSignal(samplePoint, apName);
        if (signal == nullptr) return false;
        ok = ObjFromXML(signal, child) && ok;
    }
    return ok;
}

bool ObjToString(const AccessPointOption* option, std::string& text) {
    return OptionToString(option, "AP", text);
}

bool ObjToString(const AntennaOption* option, std::string& text) {
    return OptionToString(option, "ANT", text);
}

bool ObjFromString(AccessPointOption* option, const std::string& text) {
    return OptionFromString(option, text);
}

bool ObjFromString(AntennaOption* option, const std::string& text) {
    return OptionFromString(option, text);
}

bool FilehasSystem(const char* file) {
    if (file == nullptr) return false;
    SystemXmlDocument document;
    if (document.LoadFile(file) != tinyxml2::XML_SUCCESS) return false;
    const XMLElement* root = document.RootElement();
    return root != nullptr && std::string(root->Name()) == "System_";
}

bool SystemFromFile(e_System_* system, const char* file) {
    SystemXmlDocument document;
    if (file == nullptr || document.LoadFile(file) != tinyxml2::XML_SUCCESS) {
        Log::log(1) << "SystemFromFile() failed - cannot load " << (file ? file : "(no file)")
                    << "\n";
        return false;
    }
    return ObjFromXML(system, system, document.RootElement());
}

bool SystemToFile(const e_System_* system, const char* file) {
    if (system == nullptr || file == nullptr) {
        Log::log(1) << "SystemToFile() failed - no system or no file\n";
        return false;
    }
    SystemXmlDocument document;
    ObjToXML(system, document.NewRoot("System_"));
    if (document.SaveFile(file) == tinyxml2::XML_SUCCESS) return true;
    Log::log(1) << "SystemToFile() failed - cannot save " << file << "\n";
    return false;
}

bool SystemToString(const e_System_* system, std::string& text) {
    if (system == nullptr) {
        Log::log(1) << "SystemToString() failed - no system\n";
        return false;
    }
    SystemXmlDocument document;
    ObjToXML(system, document.NewRoot("System_"));
    document.ToText(text);
    return true;
}

bool SystemToCSV(const e_System_* system, const char* file) {
    if (system == nullptr || file == nullptr) {
        Log::log(1) << "SystemToCSV() failed - no system or no file\n";
        return false;
    }
    std::ofstream out(file);
    if (!out) {
        Log::log(1) << "SystemToCSV() failed - cannot open " << file << "\n";
        return false;
    }
    out << "sampleName, "
        << "x, y, z, "
        << "dist(tx0), "
        << "expectedPower_dBm, receivedPower_dBm, receivedPower_dBW\n";
    const e_AccessPoint_* firstAccessPoint = system->accessPoints;
    for (const e_SamplePoint_* point = system->samplePoints; point != nullptr;
         point = point->next) {
        double distance = firstAccessPoint != nullptr
                              ? pointDistance(&point->location, &firstAccessPoint->location)
                              : -1;
        for (const e_ReceivedSignal_* signal = point->signals; signal != nullptr;
             signal = signal->next) {
            out << (point->name != nullptr ? point->name : "<unknown>") << ", " << point->location.x
                << ", " << point->location.y << ", " << point->location.z << ", " << distance
                << ", " << signal->expectedPower_dBm << ", " << signal->receivedPower_dBm << ", "
                << signal->receivedPower_dBW << "\n";
        }
    }
    out << "done\n";
    out.close();
    return !out.fail();
}
