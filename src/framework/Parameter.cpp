#include "framework/Parameter.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <type_traits>

#include "documents/CElement.h"
#include "framework/Component.h"
#include "logging/Log.h"

namespace {

// Truncates toward zero into the int range; NaN gives 0.
int Truncate(double v) {
    if (std::isnan(v)) return 0;
    if (v >= static_cast<double>(INT_MAX)) return INT_MAX;
    if (v <= static_cast<double>(INT_MIN)) return INT_MIN;
    return static_cast<int>(v);
}

// The leading decimal integer of a text, as atoi reads it, held to the int range.
int TextToInt(const std::string& text) {
    const long v = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(std::clamp<long>(v, INT_MIN, INT_MAX));
}

template <typename T>
std::string StreamText(T v) {
    std::ostringstream out;
    out << v;
    return out.str();
}

template <typename T>
constexpr bool kScaled =
    std::is_same_v<T, int> || std::is_same_v<T, float> || std::is_same_v<T, double>;

// raw x factor in the kind of raw; an int truncates.
template <typename T>
T Scaled(T raw, double factor) {
    if (factor == 1.0) return raw;
    if constexpr (std::is_same_v<T, int>) {
        return Truncate(raw * factor);
    } else {
        return static_cast<T>(raw * factor);
    }
}

template <typename K, typename V>
V Lookup(const std::map<K, V>& table, K key, V fallback) {
    const auto found = table.find(key);
    return found == table.end() ? fallback : found->second;
}

std::string TextOf(const std::map<eParamValue, std::string>& table, eParamValue key) {
    return Lookup(table, key, std::string());
}

// The key of the first entry from first to last whose text equals text.
template <typename K>
bool FindText(const std::map<K, std::string>& table, const std::string& text, int first, int last,
              K& found) {
    for (auto it = table.lower_bound(static_cast<K>(first)); it != table.end() && it->first <= last;
         ++it) {
        if (it->second == text) {
            found = it->first;
            return true;
        }
    }
    return false;
}

// The text of an attribute; false when the element has no such attribute.
bool AttributeText(CElement* element, eAttrNameId id, std::string& out) {
    const char* text = element->getAttributeValue(id);
    if (text == nullptr) return false;
    out = text;
    return true;
}

// Looks the attribute's text up in entries first to last of the table; an absent attribute,
// an empty text (when skipEmpty) or an unknown text leaves key as it is.
template <typename K>
void ReadKey(CElement* element, eAttrNameId id, const std::map<K, std::string>& table, int first,
             int last, K& key, bool skipEmpty) {
    std::string text;
    if (!AttributeText(element, id, text) || (skipEmpty && text.empty())) return;
    FindText(table, text, first, last, key);
}

// Close enough for values that went through a file's six decimals.
bool NearlyEqual(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max(1.0, std::fabs(a));
}

bool SameOptions(const std::vector<std::string>* a, const std::vector<std::string>* b) {
    const bool aEmpty = a == nullptr || a->empty();
    const bool bEmpty = b == nullptr || b->empty();
    if (aEmpty || bEmpty) return aEmpty == bEmpty;
    return *a == *b;
}

// The attribute that holds the value of a store type; A_UNK for "PS_NON".
eAttrNameId ValueAttributeId(eParamStoreType kind) {
    switch (kind) {
        case PS_EVA:
            return A_VAL;
        case PS_ENU:
            return A_NUM;
        case PS_STR:
            return A_STRVAL;
        case PS_DBL:
            return A_DBLVAL;
        case PS_FLT:
            return A_FLTVAL;
        case PS_INT:
            return A_INTVAL;
        case PS_BOL:
            return A_BOOLVAL;
        default:
            return A_UNK;
    }
}

bool IsValueListKind(eParamOptions kind) {
    switch (kind) {
        case PO_VALUES:
        case PO_BOOL:
        case PO_VALUES_31:
        case PO_VALUES_32:
        case PO_VALUES_33:
        case PO_VALUES_35:
        case PO_VALUES_36:
        case PO_VALUES_37:
            return true;
        default:
            return false;
    }
}

bool IsNumberKind(eParamOptions kind) { return kind >= PO_NUM_DIMS && kind <= PO_NUM_PM1000; }

}  // namespace

Parameter::Parameter() {
    objTypeStr = "Parameter";
    LoadStringArrays();
}

Parameter::Parameter(const Parameter& other)
    : SimObject(other),
      storeType(other.storeType),
      passedThrough(other.passedThrough),
      optionsType(other.optionsType),
      includeZero(other.includeZero),
      group(other.group),
      name(other.name),
      number(other.number),
      value(other.value),
      desc(other.desc),
      showOptions(other.showOptions),
      reSimOnChange(other.reSimOnChange),
      stringValue(other.stringValue ? new std::string(*other.stringValue) : nullptr),
      index(other.index),
      intValue(other.intValue),
      doubleValue(other.doubleValue),
      floatValue(other.floatValue),
      boolValue(other.boolValue),
      options(other.options ? new std::vector<std::string>(*other.options) : nullptr) {
    LoadStringArrays();
}

Parameter::~Parameter() {
    delete stringValue;
    delete options;
}

void Parameter::setParName(eParamName parName) {
    name = parName;
    ProcessParamName();
    SetName(Lookup(paramNameGUIStrings, parName, std::string()));
}

void Parameter::ProcessParamName() {
    desc.type = PT_INV;
    optionsType = PO_FREE;
    showOptions = true;
    group = PG_UNK;
    if (const sNameRule* rule = FindNameRule(name)) ApplyNameRule(*rule);
    // A number kind always takes its limits from its range.
    if (const sNumberRange* range = FindNumberRange(optionsType)) {
        desc.limits[0] = range->first;
        desc.limits[1] = range->last;
    }
}

void Parameter::ApplyNameRule(const sNameRule& rule) {
    desc.type = rule.type;
    optionsType = rule.options;
    group = rule.group;
    showOptions = rule.showOptions;
    if (rule.first != -1) {
        desc.limits[0] = rule.first;
        desc.limits[1] = rule.last;
    }
    if (rule.zero != ZERO_KEEP) includeZero = rule.zero == ZERO_YES;
    if (!rule.showInDataTree) SetShowInDataTree(false);
    ApplyReSimRule(rule.reSim);
}

void Parameter::ApplyReSimRule(eReSimRule rule) {
    switch (rule) {
        case RESIM_NEVER:
            reSimOnChange = false;
            break;
        case RESIM_SYSTEM:
            reSimOnChange = !ParentSystemTypeIs({PV_BUILDING});
            break;
        case RESIM_CITY:
            reSimOnChange = !ParentSystemTypeIs({PV_BUILDING, PV_URBAN_CITY, PV_SUBURBAN_CITY});
            break;
        case RESIM_KEEP:
            break;
    }
}

bool Parameter::ParentSystemTypeIs(std::initializer_list<eParamValue> systemTypes) {
    SimObject* parentObject = GetParent();
    if (parentObject == nullptr || !parentObject->TestType("OpticElement")) return false;
    Component* component = dynamic_cast<Component*>(parentObject);
    Parameter* systemTypeParameter = component ? component->GetParameterp(PN_SYSTYP) : nullptr;
    eParamValue systemType = PV_EMPTY;
    if (systemTypeParameter == nullptr || !systemTypeParameter->getValue(&systemType)) return false;
    return std::find(systemTypes.begin(), systemTypes.end(), systemType) != systemTypes.end();
}

// Setting values.

bool Parameter::markStored(eParamStoreType kind, sParamDesc** inDesc) {
    if (inDesc != nullptr && *inDesc != nullptr) desc = **inDesc;
    storeType = kind;
    passedThrough = false;
    return true;
}

void Parameter::setString(const std::string& text) {
    if (stringValue == nullptr) {
        stringValue = new std::string(text);
    } else {
        *stringValue = text;
    }
}

bool Parameter::setValue(const std::string& v, sParamDesc** inDesc) {
    setString(v);
    return markStored(PS_STR, inDesc);
}

bool Parameter::setValue(const char* v, sParamDesc** inDesc) {
    return setValue(std::string(v != nullptr ? v : ""), inDesc);
}

bool Parameter::setValue(int v, sParamDesc** inDesc) {
    intValue = v;
    return markStored(PS_INT, inDesc);
}

bool Parameter::setValue(float v, sParamDesc** inDesc) {
    floatValue = v;
    return markStored(PS_FLT, inDesc);
}

bool Parameter::setValue(double v, sParamDesc** inDesc) {
    doubleValue = v;
    return markStored(PS_DBL, inDesc);
}

bool Parameter::setValue(eParamValue v, sParamDesc** inDesc) {
    markStored(PS_EVA, inDesc);
    if (inLimits(v)) value = v;
    return true;
}

bool Parameter::setValue(eParamNumber v, sParamDesc** inDesc) {
    markStored(PS_ENU, inDesc);
    if (inLimits(v)) number = v;
    return true;
}

bool Parameter::setValue(bool v, sParamDesc** inDesc) {
    boolValue = v;
    return markStored(PS_BOL, inDesc);
}

bool Parameter::hasLimits() const { return desc.limits[0] != -1 && desc.limits[1] != -1; }

bool Parameter::inLimits(int v) const {
    return !hasLimits() || (v >= desc.limits[0] && v <= desc.limits[1]);
}

// Reading values.

bool Parameter::prepareRead(eParamStoreType kind, sParamDesc** outDesc) {
    if (storeType != kind && !passedThrough && !passThroughStoreTypes()) return false;
    if (outDesc != nullptr) *outDesc = &desc;
    return true;
}

double Parameter::FactorOf(eParamMultiplier mult) {
    if (mult == PM_NON) return 1.0;
    return Lookup(paramMultiplierValues, mult, 1.0);
}

template <typename T>
bool Parameter::readValue(T* out, const T& field, eParamStoreType kind, sParamDesc** outDesc) {
    if (out == nullptr || !prepareRead(kind, outDesc)) return false;
    *out = field;
    if constexpr (kScaled<T>) {
        if (outDesc == nullptr) *out = Scaled(field, FactorOf(desc.mult));
    }
    return true;
}

bool Parameter::getValue(std::string* out, sParamDesc** outDesc) {
    if (out == nullptr || !prepareRead(PS_STR, outDesc) || stringValue == nullptr) return false;
    *out = *stringValue;
    return true;
}

bool Parameter::getValue(int* out, sParamDesc** outDesc) {
    return readValue(out, intValue, PS_INT, outDesc);
}

bool Parameter::getValue(float* out, sParamDesc** outDesc) {
    return readValue(out, floatValue, PS_FLT, outDesc);
}

bool Parameter::getValue(double* out, sParamDesc** outDesc) {
    return readValue(out, doubleValue, PS_DBL, outDesc);
}

bool Parameter::getValue(eParamValue* out, sParamDesc** outDesc) {
    return readValue(out, value, PS_EVA, outDesc);
}

bool Parameter::getValue(eParamNumber* out, sParamDesc** outDesc) {
    return readValue(out, number, PS_ENU, outDesc);
}

bool Parameter::getValue(bool* out, sParamDesc** outDesc) {
    return readValue(out, boolValue, PS_BOL, outDesc);
}

const char* Parameter::getValue() {
    if (!prepareRead(PS_STR, nullptr) || stringValue == nullptr) return nullptr;
    return stringValue->c_str();
}

// Comparing values.

template <typename T>
bool Parameter::equalsStored(const T& v) {
    T stored{};
    return getValue(&stored) && stored == v;
}

template <typename T>
bool Parameter::numberWithin(T v, double tolerance, const sParamDesc* given) {
    T stored{};
    if (!getValue(&stored)) return false;
    const T asked = given != nullptr ? Scaled(v, FactorOf(given->mult)) : v;
    return tolerance >= std::fabs(static_cast<double>(asked) - static_cast<double>(stored));
}

bool Parameter::testValue(const std::string& v, sParamDesc*) { return equalsStored(v); }

bool Parameter::testValue(const char* v, sParamDesc*) {
    return equalsStored(std::string(v != nullptr ? v : ""));
}

bool Parameter::testValue(int v, sParamDesc* given) { return numberWithin(v, 0.0, given); }

bool Parameter::testValue(float v, sParamDesc* given) { return numberWithin(v, 0.0, given); }

bool Parameter::testValue(double v, sParamDesc* given) { return numberWithin(v, 0.0, given); }

bool Parameter::testValue(eParamValue v, sParamDesc*) { return equalsStored(v); }

bool Parameter::testValue(eParamNumber v, sParamDesc*) { return equalsStored(v); }

bool Parameter::testValue(bool v, sParamDesc*) { return equalsStored(v); }

bool Parameter::testClose(int v, int tolerance, sParamDesc* given) {
    return numberWithin(v, tolerance, given);
}

bool Parameter::testClose(float v, float tolerance, sParamDesc* given) {
    return numberWithin(v, tolerance, given);
}

bool Parameter::testClose(double v, double tolerance, sParamDesc* given) {
    return numberWithin(v, tolerance, given);
}

// Deriving the other fields from the master copy.

bool Parameter::passThroughStoreTypes() {
    switch (storeType) {
        case PS_EVA:
            setString(TextOf(paramValStrings, value));
            boolValue = value == PV_TRUE;
            break;
        case PS_ENU:
            deriveFromNumber(Lookup(paramNumValues, number, 0.0));
            break;
        case PS_STR:
            deriveFromString();
            break;
        case PS_DBL:
            deriveFromNumber(doubleValue);
            break;
        case PS_FLT:
            deriveFromNumber(floatValue);
            break;
        case PS_INT:
            deriveFromNumber(intValue);
            break;
        case PS_BOL:
            deriveFromBool();
            break;
        default:
            return false;
    }
    passedThrough = true;
    return true;
}

template <typename T>
void Parameter::deriveFromNumber(T master) {
    doubleValue = static_cast<double>(master);
    floatValue = static_cast<float>(master);
    intValue = Truncate(static_cast<double>(master));
    boolValue = master != 0;
    setString(StreamText(master));
}

void Parameter::deriveFromString() {
    const std::string text = stringValue != nullptr ? *stringValue : std::string();
    if (hasLimits()) {
        const int first = std::max(desc.limits[0], 0);
        FindText(paramValStrings, text, first, std::min<int>(desc.limits[1], PV_END), value);
        FindText(paramNumStrings, text, first, std::min<int>(desc.limits[1], PNUM_END), number);
    }
    intValue = TextToInt(text);
    doubleValue = std::atof(text.c_str());
    floatValue = static_cast<float>(doubleValue);
    boolValue = text == TextOf(paramValStrings, PV_TRUE);
}

// A bool is given as the texts and the values of "true" and "false", so that it can be
// copied and shown like any other value.
void Parameter::deriveFromBool() {
    const eParamValue asValue = boolValue ? PV_TRUE : PV_FALSE;
    setString(TextOf(paramValStrings, asValue));
    value = asValue;
    intValue = boolValue ? 1 : 0;
    doubleValue = intValue;
    floatValue = static_cast<float>(intValue);
}

// Choices, captions and options.

bool Parameter::GetValueOptions(std::vector<std::string>& out, bool& isNumber) {
    out.clear();
    isNumber = false;
    if (IsValueListKind(optionsType)) {
        appendValueOptions(out);
    } else if (optionsType == PO_STRINGS) {
        appendStringOptions(out);
    } else if (IsNumberKind(optionsType)) {
        isNumber = true;
        appendNumberOptions(out);
    }
    return !out.empty();
}

void Parameter::appendValueOptions(std::vector<std::string>& out) const {
    const auto named = paramStringOptions.find(name);
    if (showOptions && options != nullptr) {
        out = *options;
    } else if (named != paramStringOptions.end()) {
        out = named->second;
    } else if (hasLimits()) {
        for (auto it = paramValStrings.lower_bound(static_cast<eParamValue>(desc.limits[0]));
             it != paramValStrings.end() && it->first <= desc.limits[1]; ++it) {
            out.push_back(it->second);
        }
    }
}

void Parameter::appendStringOptions(std::vector<std::string>& out) const {
    const auto named = paramStringOptions.find(name);
    if (named != paramStringOptions.end()) {
        out = named->second;
    } else if (options != nullptr) {
        out = *options;
    }
}

void Parameter::appendNumberOptions(std::vector<std::string>& out) const {
    if (!hasLimits()) return;
    for (int n = std::max(desc.limits[0], 0); n <= desc.limits[1] && n <= PNUM_END; ++n) {
        const eParamNumber entry = static_cast<eParamNumber>(n);
        const auto text = paramNumStrings.find(entry);
        if (text == paramNumStrings.end()) continue;
        if (!includeZero && Lookup(paramNumValues, entry, 0.0) == 0.0) continue;
        out.push_back(text->second);
    }
}

std::string Parameter::captionVal() {
    const char* text = getValue();
    if (text == nullptr) return "";
    std::string caption = text;
    if (name == PN_FNAM) {
        const size_t slash = caption.rfind('/');
        if (slash != std::string::npos) caption.erase(0, slash + 1);
    }
    return caption;
}

std::string Parameter::captionUnit() const {
    std::string unit;
    if (desc.mult != PM_NON) unit += Lookup(paramMultiplierStrings, desc.mult, std::string());
    if (desc.units != PU_NON) unit += Lookup(paramUnitGUIStrings, desc.units, std::string());
    return unit;
}

void Parameter::UpdateCaption(CElement* element) {
    if (element == nullptr) return;
    std::string caption = Lookup(paramNameGUIStrings, name, std::string());
    if (getValue() != nullptr) caption += " = " + captionVal() + " " + captionUnit();
    element->setAttribute(A_CAPT, caption);
}

bool Parameter::AddOption(const std::string& option) {
    if (options == nullptr) options = new std::vector<std::string>();
    if (std::find(options->begin(), options->end(), option) != options->end()) return false;
    options->push_back(option);
    return true;
}

void Parameter::ClearOptions() {
    delete options;
    options = nullptr;
}

bool Parameter::getParamLimits(int& first, int& last) const {
    first = desc.limits[0];
    last = desc.limits[1];
    return hasLimits();
}

void Parameter::setDesc(const sParamDesc* newDesc) {
    if (newDesc != nullptr) desc = *newDesc;
}

// Comparing and copying.

bool Parameter::CheckEq(Parameter* other) {
    if (other == nullptr) return false;
    if (name != other->name || storeType != other->storeType || desc.units != other->desc.units ||
        desc.mult != other->desc.mult || index != other->index) {
        return false;
    }
    return sameMasterValue(*other) && SameOptions(options, other->options);
}

bool Parameter::sameMasterValue(const Parameter& other) const {
    switch (storeType) {
        case PS_EVA:
            return value == other.value;
        case PS_ENU:
            return number == other.number;
        case PS_STR:
            return (stringValue ? *stringValue : "") ==
                   (other.stringValue ? *other.stringValue : "");
        case PS_DBL:
            return NearlyEqual(doubleValue, other.doubleValue);
        case PS_FLT:
            return NearlyEqual(floatValue, other.floatValue);
        case PS_INT:
            return intValue == other.intValue;
        case PS_BOL:
            return boolValue == other.boolValue;
        default:
            return true;
    }
}

bool Parameter::Copy(Parameter* other) {
    if (other == nullptr) return false;
    const char* text = other->getValue();
    if (text == nullptr) return false;
    setValue(std::string(text));
    desc.mult = other->desc.mult;
    index = other->index;
    return true;
}

// XML.

bool Parameter::ToXml(CElement* element, bool asQuick) {
    if (element == nullptr || !SimObject::ToXml(element, asQuick)) return false;
    element->setAttribute(A_STOTYPE, Lookup(paramStoreTypFILEStrings, storeType, std::string()));
    element->setAttribute(A_PARNAME, Lookup(paramNameFILEStrings, name, std::string()));
    writeValueAttribute(element);
    element->setAttribute(A_PARTYPE, Lookup(paramTypFILEStrings, desc.type, std::string()));
    // An attribute left from an earlier save is reset rather than left stale.
    if (desc.units != PU_NON || element->hasAttribute(A_UNITS)) {
        element->setAttribute(A_UNITS, Lookup(paramUnitFILEStrings, desc.units, std::string()));
    }
    if (desc.mult != PM_NON || element->hasAttribute(A_MULT)) {
        element->setAttribute(A_MULT, Lookup(paramMultiplierFILEStrings, desc.mult, std::string()));
    }
    if (index != -1 || element->hasAttribute(A_INDEX)) element->setAttribute(A_INDEX, index);
    if (HasCaption()) element->setAttribute(A_CAPT, GetCaption());
    UpdateCaption(element);
    SetAttributeDisplay(element);
    if (SimObject* parentObject = GetParent()) parentObject->SetParamsWritten(true);
    return true;
}

void Parameter::writeValueAttribute(CElement* element) const {
    switch (storeType) {
        case PS_EVA:
            element->setAttribute(A_VAL, TextOf(paramValStrings, value));
            break;
        case PS_ENU:
            element->setAttribute(A_NUM, Lookup(paramNumStrings, number, std::string()));
            break;
        case PS_STR:
            if (stringValue != nullptr) element->setAttribute(A_STRVAL, *stringValue);
            break;
        case PS_DBL:
            element->setAttribute(A_DBLVAL, doubleValue);
            break;
        case PS_FLT:
            element->setAttribute(A_FLTVAL, floatValue);
            break;
        case PS_INT:
            element->setAttribute(A_INTVAL, intValue);
            break;
        case PS_BOL:
            element->setAttribute(A_BOOLVAL, boolValue);
            break;
        default:
            break;
    }
}

bool Parameter::FromXml(CElement* element) {
    if (element == nullptr || !SimObject::FromXml(element)) return false;
    ReadKey(element, A_STOTYPE, paramStoreTypFILEStrings, PS_NON, PS_BOL, storeType, false);
    ReadKey(element, A_PARNAME, paramNameFILEStrings, PN_UNK, PN_SHOWFPLAN, name, false);
    ProcessParamName();
    readValueAttribute(element);
    ReadKey(element, A_PARTYPE, paramTypFILEStrings, PT_INV, PT_OTH, desc.type, false);
    ReadKey(element, A_UNITS, paramUnitFILEStrings, PU_NON, PU_DBI, desc.units, true);
    ReadKey(element, A_MULT, paramMultiplierFILEStrings, PM_NON, PM_PETA, desc.mult, true);
    element->getAttributeValue(A_INDEX, index);
    UpdateCaption(element);
    SetAttributeDisplay(element);
    if (Component* component = dynamic_cast<Component*>(GetParent())) component->ParamUpdated(this);
    return true;
}

template <typename K>
void Parameter::readEnumerated(CElement* element, eAttrNameId id,
                               const std::map<K, std::string>& table, int end) {
    std::string text;
    if (!AttributeText(element, id, text) || text.empty()) return;
    // Without a range the whole table is searched.
    const int first = hasLimits() ? desc.limits[0] : 0;
    const int last = hasLimits() ? desc.limits[1] : end;
    K found{};
    if (FindText(table, text, first, last, found)) {
        setValue(found);
    } else {
        setValue(text);
    }
}

template <typename T>
void Parameter::readDirect(CElement* element, eAttrNameId id) {
    T read{};
    if (element->getAttributeValue(id, read)) setValue(read);
}

void Parameter::readValueAttribute(CElement* element) {
    switch (storeType) {
        case PS_EVA:
            readEnumerated(element, A_VAL, paramValStrings, PV_END);
            break;
        case PS_ENU:
            readEnumerated(element, A_NUM, paramNumStrings, PNUM_END);
            break;
        case PS_STR:
            readDirect<std::string>(element, A_STRVAL);
            break;
        case PS_DBL:
            readDirect<double>(element, A_DBLVAL);
            break;
        case PS_FLT:
            readDirect<float>(element, A_FLTVAL);
            break;
        case PS_INT:
            readDirect<int>(element, A_INTVAL);
            break;
        case PS_BOL:
            readDirect<bool>(element, A_BOOLVAL);
            break;
        default:
            break;
    }
}

void Parameter::SetAttributeDisplay(CElement* element) {
    if (element == nullptr) return;
    for (int n = 0; n < element->attributeCount(); ++n) {
        element->getAttributeFromSeq(n)->setDisplayEditTextDropBox(true, false, false, false);
    }
    const eAttrNameId valueId = ValueAttributeId(storeType);
    if (valueId == A_UNK || !element->hasAttribute(valueId)) return;
    if (optionsType == PO_FILE) {
        element->setAttributeDisplayFilenameEdit(valueId);
        return;
    }
    if (optionsType == PO_DIRECTORY) {
        element->setAttributeDisplayDirectoryEdit(valueId);
        return;
    }
    std::vector<std::string> offer;
    bool isNumber = false;
    if (!GetValueOptions(offer, isNumber)) {
        element->setAttributeDisplayEditTextDropBox(valueId, true, true, true, false);
        return;
    }
    element->setAttributeDisplayEditTextDropBox(valueId, true, true, false, true);
    element->clearAttributeOptions(valueId);
    for (const std::string& option : offer) element->addAttributeOption(valueId, option);
}

void Parameter::Print() {
    const char* text = getValue();
    Log::log(4) << "Parameter " << Lookup(paramNameFILEStrings, name, std::string()) << " "
                << Lookup(paramStoreTypFILEStrings, storeType, std::string()) << " = "
                << (text != nullptr ? text : "") << " " << captionUnit() << "\n";
}
