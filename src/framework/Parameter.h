#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "documents/AttrNameId.h"
#include "framework/ParamTypes.h"
#include "framework/SimObject.h"

class CElement;

// A named, typed setting of a simulation object: a child of the Component that owns it.
// One of the value fields is the master copy (storeType); the others are derived from it
// on demand by passThroughStoreTypes. The value carries a unit and a multiplier, and a
// numeric read without a descriptor gives the value scaled to base units.
//
// The process-wide tables give each enumerated value its display and file text; they are
// filled by the first Parameter constructed and emptied by ClearStaticSpace.
class Parameter : public SimObject {
public:
    Parameter();
    // A copy has the other's name, value fields, descriptor, options and flags, but is a new
    // object: no id, no parent, no children.
    Parameter(const Parameter& other);
    Parameter& operator=(const Parameter&) = delete;
    ~Parameter() override;

    bool FromXml(CElement* element) override;
    bool ToXml(CElement* element, bool asQuick) override;
    void Print() override;

    // Sets type, option kind, group, limits, includeZero, the re-simulation flag and the
    // visibility that belong to the current name.
    void ProcessParamName();
    // Stores the name, runs ProcessParamName and names the object by the display name.
    void setParName(eParamName parName);

    // Each form stores v in its own field, copies **desc into the descriptor when given,
    // makes its kind the store type and clears passedThrough. Always true.
    bool setValue(const std::string& v, sParamDesc** desc = nullptr);
    bool setValue(const char* v, sParamDesc** desc = nullptr);  // null stores ""
    bool setValue(int v, sParamDesc** desc = nullptr);
    bool setValue(float v, sParamDesc** desc = nullptr);
    bool setValue(double v, sParamDesc** desc = nullptr);
    // The enumerated forms keep the old value when v lies outside a set range of limits.
    bool setValue(eParamValue v, sParamDesc** desc = nullptr);
    bool setValue(eParamNumber v, sParamDesc** desc = nullptr);
    bool setValue(bool v, sParamDesc** desc = nullptr);

    // Reads the value as the asked kind, deriving it from the master copy at need. With a
    // desc the raw stored number comes back and *desc points at this descriptor; without,
    // the numeric forms are scaled to base units. False for "PS_NON" or a null out.
    bool getValue(std::string* out, sParamDesc** desc = nullptr);
    bool getValue(int* out, sParamDesc** desc = nullptr);
    bool getValue(float* out, sParamDesc** desc = nullptr);
    bool getValue(double* out, sParamDesc** desc = nullptr);
    bool getValue(eParamValue* out, sParamDesc** desc = nullptr);
    bool getValue(eParamNumber* out, sParamDesc** desc = nullptr);
    bool getValue(bool* out, sParamDesc** desc = nullptr);
    // The value as text, or null when it has none.
    const char* getValue();

    // True when v equals the stored value; numeric forms compare in base units, v scaled by
    // the multiplier of desc when one is given.
    bool testValue(const std::string& v, sParamDesc* desc = nullptr);
    bool testValue(const char* v, sParamDesc* desc = nullptr);
    bool testValue(int v, sParamDesc* desc = nullptr);
    bool testValue(float v, sParamDesc* desc = nullptr);
    bool testValue(double v, sParamDesc* desc = nullptr);
    bool testValue(eParamValue v, sParamDesc* desc = nullptr);
    bool testValue(eParamNumber v, sParamDesc* desc = nullptr);
    bool testValue(bool v, sParamDesc* desc = nullptr);
    // As testValue, true when |v - stored| <= tolerance.
    bool testClose(int v, int tolerance, sParamDesc* desc = nullptr);
    bool testClose(float v, float tolerance, sParamDesc* desc = nullptr);
    bool testClose(double v, double tolerance, sParamDesc* desc = nullptr);

    // Fills every value field from the master copy; false for "PS_NON".
    bool passThroughStoreTypes();

    // The choices for the value: texts of values or strings, or the texts of numbers (then
    // isNumber is true). False when the kind offers no list.
    bool GetValueOptions(std::vector<std::string>& out, bool& isNumber);
    // Marks the attributes of element as fixed, except the one that holds the value.
    void SetAttributeDisplay(CElement* element);
    // Sets the caption attribute of element: display name, " = ", value and unit.
    void UpdateCaption(CElement* element);
    // The value as text; for fileLocation only the part after the last "/".
    std::string captionVal();
    // Multiplier prefix followed by the display unit, e.g. "km".
    std::string captionUnit() const;

    // Same name, store type, value, units, multiplier, index and options.
    using SimObject::CheckEq;
    bool CheckEq(Parameter* other);
    // Takes over the other's value as text, its multiplier and its index.
    bool Copy(Parameter* other);

    // Appends a per-object option; false when the text is there already.
    bool AddOption(const std::string& option);
    void ClearOptions();

    // Empties every table; the next constructor fills them again.
    static void ClearStaticSpace();

    bool ReSimOnChange() const { return reSimOnChange; }
    bool getIncludeZero() const { return includeZero; }
    eParamOptions getOptionsType() const { return optionsType; }
    // The limits; false when no range is set.
    bool getParamLimits(int& first, int& last) const;
    sParamDesc* getDesc() { return &desc; }
    // Copies the descriptor; a null pointer changes nothing.
    void setDesc(const sParamDesc* newDesc);
    eParamMultiplier getMult() const { return desc.mult; }
    void setMult(eParamMultiplier mult) { desc.mult = mult; }
    eParamName getName() const { return name; }
    int GetIndex() const { return index; }
    void SetIndex(int newIndex) { index = newIndex; }
    eParamUnits getUnits() const { return desc.units; }
    void setUnits(eParamUnits units) { desc.units = units; }
    eParamStoreType getStoreType() const { return storeType; }
    eParamGroup getGroup() const { return group; }
    bool getShowOptions() const { return showOptions; }

    // The tables, keyed by their enumerations.
    static std::map<eParamGroup, std::string> paramGroupStrings;
    static std::map<eParamName, std::string> paramNameGUIStrings;
    static std::map<eParamName, std::string> paramNameFILEStrings;
    static std::map<eParamValue, std::string> paramValStrings;
    static std::map<eParamNumber, std::string> paramNumStrings;
    static std::map<eParamNumber, double> paramNumValues;
    static std::map<eParamType, std::string> paramTypFILEStrings;
    static std::map<eParamUnits, std::string> paramUnitGUIStrings;
    static std::map<eParamUnits, std::string> paramUnitFILEStrings;
    static std::map<eParamStoreType, std::string> paramStoreTypFILEStrings;
    static std::map<eParamMultiplier, std::string> paramMultiplierDesc;
    static std::map<eParamMultiplier, std::string> paramMultiplierStrings;
    static std::map<eParamMultiplier, std::string> paramMultiplierFILEStrings;
    static std::map<eParamMultiplier, double> paramMultiplierValues;
    // Filled at run time, e.g. with the names of media for "medium".
    static std::map<eParamName, std::vector<std::string>> paramStringOptions;
    // Centre frequency in MHz of each channel value.
    static std::map<eParamValue, double> channelFreqMap;
    static bool loadedStringArrays;
    static bool channelFreqMapSet;

private:
    // How a name affects the re-simulation flag.
    enum eReSimRule : int {
        RESIM_KEEP,    // leaves the flag as it is
        RESIM_NEVER,   // a change never calls for a new simulation
        RESIM_SYSTEM,  // true, but false under a "building" system
        RESIM_CITY,    // true, but false under a "building" or city system
    };
    // How a name affects includeZero.
    enum eZeroRule : int { ZERO_KEEP, ZERO_YES, ZERO_NO };
    // What ProcessParamName sets for one name. Limits of -1 leave the current limits.
    struct sNameRule {
        eParamName name;
        eParamType type;
        eParamOptions options;
        eParamGroup group;
        int first;
        int last;
        eZeroRule zero = ZERO_KEEP;
        eReSimRule reSim = RESIM_KEEP;
        bool showOptions = true;
        bool showInDataTree = true;
    };
    // First and last entry of the number table offered by an option kind.
    struct sNumberRange {
        eParamOptions options;
        int first;
        int last;
    };

    using ChannelVisitor = std::function<void(eParamValue, const std::string&, double)>;

    // Fills the tables unless done; every constructor calls it.
    static void LoadStringArrays();
    static void LoadDescStrings();
    static void LoadNameStrings();
    static void LoadValueStrings();
    static void LoadNumberStrings();
    static void LoadChannelFreqMap();
    // Calls visit with the value number, text and centre frequency of every channel.
    static void ForEachChannel(const ChannelVisitor& visit);
    static const sNameRule* FindNameRule(eParamName parName);
    static const sNumberRange* FindNumberRange(eParamOptions kind);
    static double FactorOf(eParamMultiplier mult);
    static std::mutex tablesLock;

    void ApplyNameRule(const sNameRule& rule);
    void ApplyReSimRule(eReSimRule rule);
    // True when the parent is an OpticElement whose systemType is one of systemTypes.
    bool ParentSystemTypeIs(std::initializer_list<eParamValue> systemTypes);

    bool markStored(eParamStoreType kind, sParamDesc** inDesc);
    void setString(const std::string& text);
    bool hasLimits() const;
    bool inLimits(int v) const;

    // Derives the asked kind at need and hands out the descriptor.
    bool prepareRead(eParamStoreType kind, sParamDesc** outDesc);
    template <typename T>
    bool readValue(T* out, const T& field, eParamStoreType kind, sParamDesc** outDesc);
    template <typename T>
    bool equalsStored(const T& v);
    template <typename T>
    bool numberWithin(T v, double tolerance, const sParamDesc* given);

    template <typename T>
    void deriveFromNumber(T master);
    void deriveFromString();
    void deriveFromBool();

    void appendValueOptions(std::vector<std::string>& out) const;
    void appendStringOptions(std::vector<std::string>& out) const;
    void appendNumberOptions(std::vector<std::string>& out) const;

    bool sameMasterValue(const Parameter& other) const;

    void writeValueAttribute(CElement* element) const;
    void readValueAttribute(CElement* element);
    template <typename K>
    void readEnumerated(CElement* element, eAttrNameId id, const std::map<K, std::string>& table,
                        int end);
    template <typename T>
    void readDirect(CElement* element, eAttrNameId id);

    eParamStoreType storeType = PS_NON;
    bool passedThrough = false;
    eParamOptions optionsType = PO_FREE;
    bool includeZero = true;
    eParamGroup group = PG_UNK;
    eParamName name = PN_UNK;
    eParamNumber number = static_cast<eParamNumber>(1);
    eParamValue value = PV_EMPTY;
    sParamDesc desc;
    bool showOptions = true;
    bool reSimOnChange = true;
    std::string* stringValue = nullptr;
    int index = -1;
    int intValue = 0;
    double doubleValue = 0;
    float floatValue = 0;
    bool boolValue = false;
    std::vector<std::string>* options = nullptr;
};
