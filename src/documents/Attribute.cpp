#include "documents/Attribute.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <mutex>

std::string Attribute::attGUIStrings[attrNameIdLast + 1];
std::string Attribute::attFILEStrings[attrNameIdLast + 1];
std::atomic<bool> Attribute::nameStringsSet{false};

namespace {

struct AttrNames {
    const char* file;
    const char* display;
};

// Row i holds id i; row 0 is unused.
constexpr AttrNames attrNameTable[attrNameIdLast + 1] = {
    {"", ""},
    {"A_UNK", "att_unknown"},
    {"A_INITSWDESC", "initSoftwareDesc"},
    {"A_INITBUILDTSMP", "initBuildTimeStamp"},
    {"A_INITSAVETSMP", "initSaveTimeStamp"},
    {"A_LASTSWDESC", "lastSoftwareDesc"},
    {"A_LASTBUILDTSMP", "lastBuildTimeStamp"},
    {"A_LASTSAVETSMP", "lastSaveTimeStamp"},
    {"A_WILREND", "willRender"},
    {"A_RENDID", "renderId"},
    {"A_HILIGHT", "highlighted"},
    {"A_PNTTHICK", "pointhickness"},
    {"A_LINTHICK", "lineThickness"},
    {"A_FILL", "filled"},
    {"A_SIMOBJID", "SimObjectID"},
    {"A_OBJTYP", "objTypeStr"},
    {"A_OBJTYPID", "objTypeId"},
    {"A_NAME", "Name"},
    {"A_OBJNAMEID", "objNameId"},
    {"A_CAPT", "Caption"},
    {"A_QIKSET", "quickSet"},
    {"A_STOTYPE", "storeType"},
    {"A_PARNAME", "paramName"},
    {"A_NUM", "number"},
    {"A_VAL", "value"},
    {"A_STRVAL", "stringValue"},
    {"A_PARTYPE", "paramType"},
    {"A_UNITS", "units"},
    {"A_MULT", "multiplier"},
    {"A_MINVAL", "minValue"},
    {"A_MAXVAL", "maxValue"},
    {"A_INDEX", "index"},
    {"A_INTVAL", "intValue"},
    {"A_DBLVAL", "doubleValue"},
    {"A_FLTVAL", "floatValue"},
    {"A_BOOLVAL", "boolValue"},
    {"A_ANG", "angle"},
    {"A_ANGSP", "angleSpeed"},
    {"A_SP", "speed"},
    {"A_X", "X"},
    {"A_Y", "Y"},
    {"A_Z", "Z"},
    {"A_R", "R"},
    {"A_G", "G"},
    {"A_B", "B"},
    {"A_TOP", "top"},
    {"A_LEFT", "left"},
    {"A_WIDTH", "width"},
    {"A_HEIGHT", "height"},
    {"A_COMPTYP", "componentType"},
};

// Guards filling and emptying the name tables.
std::mutex nameStringsLock;

const std::string emptyText;

// printf of one number into a string of whatever length it needs.
template <typename T>
std::string Format(const char* format, T value) {
    int length = std::snprintf(nullptr, 0, format, value);
    if (length <= 0) return std::string();
    std::string out(static_cast<size_t>(length) + 1, '\0');
    std::snprintf(out.data(), out.size(), format, value);
    out.resize(static_cast<size_t>(length));
    return out;
}

// Truncation towards zero, held to the int range (NaN gives 0).
int TruncateToInt(double value) {
    if (std::isnan(value)) return 0;
    if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
    if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
    return static_cast<int>(value);
}

// atoi's reading of the text, held to the int range instead of overflowing.
int TextToInt(const std::string& text) {
    long value = std::strtol(text.c_str(), nullptr, 10);
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int>(value);
}

bool FindInTable(const std::string (&table)[attrNameIdLast + 1], const std::string& text,
                 eAttrNameId& id) {
    Attribute::SetNameStrings();
    for (int i = attrNameIdFirst; i <= attrNameIdLast; i++) {
        if (table[i] == text) {
            id = static_cast<eAttrNameId>(i);
            return true;
        }
    }
    return false;
}

}  // namespace

Attribute::Attribute() { SetNameStrings(); }

Attribute::Attribute(eAttrNameId id) : nameId(id) { SetNameStrings(); }

Attribute::Attribute(const Attribute& other) : NexoBase(other) {
    SetNameStrings();
    *this = other;
}

Attribute& Attribute::operator=(const Attribute& other) {
    if (this == &other) return *this;
    nameId = other.nameId;
    hasString = other.hasString;
    stringValue = other.stringValue;
    doubleValue = other.doubleValue;
    floatValue = other.floatValue;
    intValue = other.intValue;
    boolValue = other.boolValue;
    options.reset(other.options ? new std::vector<std::string>(*other.options) : nullptr);
    storeType = other.storeType;
    flowed = other.flowed;
    display = other.display;
    edit = other.edit;
    text = other.text;
    dropBox = other.dropBox;
    filenameChooser = other.filenameChooser;
    directoryChooser = other.directoryChooser;
    return *this;
}

void Attribute::setMaster(eAttrNameId id, eAttrStoreType type) {
    nameId = id;
    storeType = type;
    hasString = (type == AST_STRING);
    flowed = false;
}

void Attribute::set(eAttrNameId id, const std::string& value) {
    stringValue = value;
    setMaster(id, AST_STRING);
}

void Attribute::set(eAttrNameId id, const char* value) {
    stringValue = value != nullptr ? value : "";
    setMaster(id, AST_STRING);
}

void Attribute::set(eAttrNameId id, double value) {
    doubleValue = value;
    setMaster(id, AST_DOUBLE);
}

void Attribute::set(eAttrNameId id, float value) {
    floatValue = value;
    setMaster(id, AST_FLOAT);
}

void Attribute::set(eAttrNameId id, int value) {
    intValue = value;
    setMaster(id, AST_INT);
}

void Attribute::set(eAttrNameId id, bool value) {
    boolValue = value;
    setMaster(id, AST_BOOL);
}

bool Attribute::get(std::string& out) {
    flowValue(AST_STRING);
    out = stringValue;
    return true;
}

bool Attribute::get(const char*& out) {
    out = getValue();
    return true;
}

bool Attribute::get(double& out) {
    out = getDouble();
    return true;
}

bool Attribute::get(float& out) {
    flowValue(AST_FLOAT);
    out = floatValue;
    return true;
}

bool Attribute::get(int& out) {
    out = getInt();
    return true;
}

bool Attribute::get(bool& out) {
    flowValue(AST_BOOL);
    out = boolValue;
    return true;
}

const char* Attribute::getValue() {
    flowValue(AST_STRING);
    return stringValue.c_str();
}

int Attribute::getInt() {
    flowValue(AST_INT);
    return intValue;
}

double Attribute::getDouble() {
    flowValue(AST_DOUBLE);
    return doubleValue;
}

bool Attribute::testValue(const std::string& value) {
    flowValue(AST_STRING);
    return stringValue == value;
}

bool Attribute::testValue(const char* value) {
    return value != nullptr && testValue(std::string(value));
}

bool Attribute::testValue(double value) { return getDouble() == value; }

bool Attribute::testValue(float value) {
    flowValue(AST_FLOAT);
    return floatValue == value;
}

bool Attribute::testValue(int value) { return getInt() == value; }

bool Attribute::testValue(bool value) {
    flowValue(AST_BOOL);
    return boolValue == value;
}

bool Attribute::equalTo(Attribute* other) {
    if (other == nullptr || other->nameId != nameId) return false;
    other->flowValue(storeType);
    switch (storeType) {
        case AST_DOUBLE:
            return other->doubleValue == doubleValue;
        case AST_FLOAT:
            return other->floatValue == floatValue;
        case AST_INT:
            return other->intValue == intValue;
        case AST_BOOL:
            return other->boolValue == boolValue;
        default:
            return other->stringValue == stringValue;
    }
}

void Attribute::print(int indent) {
    NexoBase::log(logStatus) << std::string(indent > 0 ? indent : 0, ' ') << GUIString(nameId)
                             << " = " << getValue() << "\n";
}

bool Attribute::AddOption(const std::string& option) {
    if (!options) options = std::make_unique<std::vector<std::string>>();
    for (const std::string& present : *options) {
        if (present == option) return false;
    }
    options->push_back(option);
    return true;
}

void Attribute::SetOptions(const std::vector<std::string>& newOptions) {
    options = std::make_unique<std::vector<std::string>>(newOptions);
}

void Attribute::setDisplayEditTextDropBox(bool showIt, bool editIt, bool asText, bool asDropBox) {
    display = showIt;
    edit = editIt;
    text = asText;
    dropBox = asDropBox;
}

void Attribute::flowValue(eAttrStoreType wanted) {
    if (wanted == storeType || flowed) return;
    switch (storeType) {
        case AST_STRING:
            flowFromString();
            break;
        case AST_DOUBLE:
            stringValue = Format("%f", doubleValue);
            flowFromNumber(doubleValue);
            break;
        case AST_FLOAT:
            stringValue = Format("%f", static_cast<double>(floatValue));
            flowFromNumber(floatValue);
            break;
        case AST_INT:
            stringValue = Format("%i", intValue);
            flowFromNumber(intValue);
            break;
        case AST_BOOL:
            stringValue = boolValue ? "true" : "false";
            flowFromNumber(boolValue ? 1.0 : 0.0);
            break;
    }
    flowed = true;
}

void Attribute::flowFromString() {
    doubleValue = std::atof(stringValue.c_str());
    floatValue = static_cast<float>(doubleValue);
    intValue = TextToInt(stringValue);
    boolValue = (stringValue == "true");
}

// Fills the numeric forms other than the master's from its value.
void Attribute::flowFromNumber(double value) {
    if (storeType != AST_DOUBLE) doubleValue = value;
    if (storeType != AST_FLOAT) floatValue = static_cast<float>(value);
    if (storeType != AST_INT) intValue = TruncateToInt(value);
    if (storeType != AST_BOOL) boolValue = (value != 0.0);
}

bool Attribute::FileStringToId(const std::string& fileName, eAttrNameId& id) {
    return FindInTable(attFILEStrings, fileName, id);
}

bool Attribute::GUIStringToId(const std::string& displayName, eAttrNameId& id) {
    return FindInTable(attGUIStrings, displayName, id);
}

const std::string& Attribute::FileString(int id) {
    SetNameStrings();
    return IsValidAttrNameId(id) ? attFILEStrings[id] : emptyText;
}

const std::string& Attribute::GUIString(int id) {
    SetNameStrings();
    return IsValidAttrNameId(id) ? attGUIStrings[id] : emptyText;
}

void Attribute::SetNameStrings() {
    if (nameStringsSet.load(std::memory_order_acquire)) return;
    std::lock_guard<std::mutex> guard(nameStringsLock);
    if (nameStringsSet.load(std::memory_order_relaxed)) return;
    for (int i = attrNameIdFirst; i <= attrNameIdLast; i++) {
        attFILEStrings[i] = attrNameTable[i].file;
        attGUIStrings[i] = attrNameTable[i].display;
    }
    nameStringsSet.store(true, std::memory_order_release);
}

void Attribute::ClearStaticSpace() {
    std::lock_guard<std::mutex> guard(nameStringsLock);
    for (int i = 0; i <= attrNameIdLast; i++) {
        attFILEStrings[i].clear();
        attGUIStrings[i].clear();
    }
    nameStringsSet.store(false, std::memory_order_release);
}
