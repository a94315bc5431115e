// The static tables of Parameter: sizes, the system's own texts, and the round trip of every
// name, value, number and channel between its number and its file text.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "documents/CElement.h"
#include "framework/Parameter.h"

namespace {

// Writes p into a fresh element and loads that into a parameter that was given desc first.
void RoundTrip(Parameter& p, Parameter& loaded, const sParamDesc* desc = nullptr) {
    CElement element;
    ASSERT_TRUE(p.ToXml(&element, false));
    loaded.setDesc(desc);
    ASSERT_TRUE(loaded.FromXml(&element));
}

// The runs of consecutive keys of a table, as first and last key.
template <typename K>
std::vector<std::pair<int, int>> Runs(const std::map<K, std::string>& table) {
    std::vector<std::pair<int, int>> runs;
    for (const auto& entry : table) {
        const int key = entry.first;
        if (!runs.empty() && runs.back().second == key - 1) {
            runs.back().second = key;
        } else {
            runs.emplace_back(key, key);
        }
    }
    return runs;
}

// A parameter without limits of its own, so that the limits given decide the lookups.
constexpr eParamName kFreeName = PN_VAL;

}  // namespace

TEST(ParameterTablesTest, TablesHaveTheirSizes) {
    Parameter p;
    EXPECT_EQ(Parameter::paramGroupStrings.size(), 12u);
    EXPECT_EQ(Parameter::paramNameFILEStrings.size(), 209u);
    EXPECT_EQ(Parameter::paramNameGUIStrings.size(), 210u);
    EXPECT_EQ(Parameter::paramNameGUIStrings[static_cast<eParamName>(0)], "");
    EXPECT_EQ(Parameter::paramValStrings.size(), 439u);
    EXPECT_EQ(Parameter::paramNumStrings.size(), 265u);
    // Every number text has a value but the 13 zeros at the head of a group.
    EXPECT_EQ(Parameter::paramNumValues.size(), 252u);
    EXPECT_EQ(Parameter::paramTypFILEStrings.size(), 17u);
    EXPECT_EQ(Parameter::paramUnitGUIStrings.size(), 12u);
    EXPECT_EQ(Parameter::paramUnitFILEStrings.size(), 12u);
    EXPECT_EQ(Parameter::paramStoreTypFILEStrings.size(), 8u);
    EXPECT_EQ(Parameter::paramMultiplierDesc.size(), 12u);
    EXPECT_EQ(Parameter::paramMultiplierStrings.size(), 12u);
    EXPECT_EQ(Parameter::paramMultiplierFILEStrings.size(), 12u);
    EXPECT_EQ(Parameter::paramMultiplierValues.size(), 12u);
    EXPECT_EQ(Parameter::channelFreqMap.size(), 221u);
    EXPECT_TRUE(Parameter::loadedStringArrays);
    EXPECT_TRUE(Parameter::channelFreqMapSet);
}

TEST(ParameterTablesTest, TextsAreTheSystemsOwn) {
    Parameter p;
    EXPECT_EQ(Parameter::paramGroupStrings[PG_UNK], "error - unkown group");
    EXPECT_EQ(Parameter::paramGroupStrings[PG_MAPPING], "Mapping ..");
    EXPECT_EQ(Parameter::paramNameFILEStrings[PN_WHOWAS], "PN_WHOWAS");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_WHOWAS], "showAs");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_VOLTYP], "vlumeType");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_VOLSTEPS], "vlumeSteps");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_RELPERM], "relativePermitivity");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_VOLLOSS], "volumeLoss/cm");
    EXPECT_EQ(Parameter::paramNameFILEStrings[FLMAT], "FLMAT");
    EXPECT_EQ(Parameter::paramNameFILEStrings[CETHK], "CETHK");
    EXPECT_EQ(Parameter::paramNameFILEStrings[FUNCPAR], "FUNCPAR");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_PWRWATT], "power");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_PWRDB], "power");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_FDTDDIM], "Dimensions");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_TRACEREND], "RenderLevel");
    EXPECT_EQ(Parameter::paramNameFILEStrings[PN_SHOWFPLAN], "PN_SHOWFPLAN");
    EXPECT_EQ(Parameter::paramValStrings[PV_EMPTY], "");
    EXPECT_EQ(Parameter::paramValStrings[static_cast<eParamValue>(2)], "value");
    EXPECT_EQ(Parameter::paramValStrings[PV_BUILDING], "building");
    EXPECT_EQ(Parameter::paramValStrings[static_cast<eParamValue>(160)],
              "(In building) WINNER II A1 ");
    EXPECT_EQ(Parameter::paramValStrings[static_cast<eParamValue>(196)],
              "triRayIntensityInterpolateflat");
    EXPECT_EQ(Parameter::paramValStrings[static_cast<eParamValue>(282)], "none");
    EXPECT_EQ(Parameter::paramValStrings[PV_TRUE], "true");
    EXPECT_EQ(Parameter::paramValStrings[PV_FALSE], "false");
    EXPECT_EQ(Parameter::paramValStrings.count(static_cast<eParamValue>(3)), 0u);
    EXPECT_EQ(Parameter::paramNumStrings[PNUM_NONE], "None");
    EXPECT_EQ(Parameter::paramNumStrings[static_cast<eParamNumber>(3)], "1D");
    EXPECT_EQ(Parameter::paramNumStrings[static_cast<eParamNumber>(313)], "+1000");
    EXPECT_EQ(Parameter::paramNumStrings.count(static_cast<eParamNumber>(194)), 0u);
    EXPECT_EQ(Parameter::paramTypFILEStrings[PT_SCTYP], "PT_SCTYP");
    EXPECT_EQ(Parameter::paramUnitFILEStrings[PU_LMD], "PU_LMD");
    EXPECT_EQ(Parameter::paramUnitGUIStrings[PU_LMD], "lamda");
    EXPECT_EQ(Parameter::paramUnitGUIStrings[PU_NON], "");
    EXPECT_EQ(Parameter::paramUnitGUIStrings[PU_PC], "%");
    EXPECT_EQ(Parameter::paramStoreTypFILEStrings[PS_BOL], "PS_BOL");
}

TEST(ParameterTablesTest, NumberValuesFollowTheirTexts) {
    Parameter p;
    const auto& values = Parameter::paramNumValues;
    EXPECT_EQ(values.at(PNUM_NONE), 0.0);
    EXPECT_EQ(values.at(static_cast<eParamNumber>(3)), 1.0);  // "1D"
    EXPECT_EQ(values.at(static_cast<eParamNumber>(29)), 0.01);
    EXPECT_EQ(values.at(static_cast<eParamNumber>(42)), 0.0);   // a "0" inside a group
    EXPECT_EQ(values.at(static_cast<eParamNumber>(46)), 10.0);  // "+10"
    EXPECT_EQ(values.at(static_cast<eParamNumber>(163)), 1000000.0);
    EXPECT_EQ(values.at(static_cast<eParamNumber>(242)), 5000.0);
    EXPECT_EQ(values.at(static_cast<eParamNumber>(293)), -1000.0);
    for (int head : {8, 15, 28, 72, 82, 95, 105, 118, 131, 144, 166, 179, 245}) {
        EXPECT_EQ(values.count(static_cast<eParamNumber>(head)), 0u) << head;
    }
    for (const auto& [number, text] : Parameter::paramNumStrings) {
        if (values.count(number) == 0) continue;
        if (number == PNUM_NONE) continue;
        EXPECT_DOUBLE_EQ(values.at(number), std::stod(text)) << text;
    }
}

TEST(ParameterTablesTest, MultipliersHaveWordPrefixFileNameAndFactor) {
    Parameter p;
    struct Row {
        eParamMultiplier mult;
        const char* word;
        const char* prefix;
        const char* file;
        double factor;
    };
    const Row rows[] = {
        {PM_ATTO, "atto", "a", "PM_ATTO", 1e-18},   {PM_FEMTO, "femto", "f", "PM_FEMTO", 1e-15},
        {PM_PICO, "pico", "p", "PM_PICO", 1e-12},   {PM_NANO, "nano", "n", "PM_NANO", 1e-9},
        {PM_MICRO, "micro", "u", "PM_MICRO", 1e-6}, {PM_MILLI, "milli", "m", "PM_MILLI", 1e-3},
        {PM_ONE, "one", "", "PM_ONE", 1},           {PM_KILO, "kilo", "k", "PM_KILO", 1e3},
        {PM_MEGA, "Mega", "M", "PM_MEGA", 1e6},     {PM_GIGA, "Giga", "G", "PM_GIGA", 1e9},
        {PM_TERRA, "Terra", "T", "PM_TERRA", 1e12}, {PM_PETA, "Peta", "P", "PM_PETA", 1e15},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Parameter::paramMultiplierDesc.at(row.mult), row.word);
        EXPECT_EQ(Parameter::paramMultiplierStrings.at(row.mult), row.prefix);
        EXPECT_EQ(Parameter::paramMultiplierFILEStrings.at(row.mult), row.file);
        EXPECT_EQ(Parameter::paramMultiplierValues.at(row.mult), row.factor);
    }
    EXPECT_EQ(Parameter::paramMultiplierValues.count(PM_NON), 0u);
}

TEST(ParameterTablesTest, ChannelsHaveTheirTextsAndFrequencies) {
    Parameter p;
    struct Channel {
        int value;
        const char* text;
        double mhz;
    };
    const Channel channels[] = {
        {285, "1", 2412},
        {290, "6", 2437},
        {297, "13", 2472},
        {298, "14", 2484},
        {301, "7", 5035},
        {309, "36", 5180},
        {365, "196", 5980},
        {368, "E-UTRA FDD 1 uplink", 1950},
        {369, "E-UTRA FDD 1 downlink", 2140},
        {392, "E-UTRA FDD 13 uplink", 782},
        {405, "E-UTRA FDD 21 downlink", 1503.4},
        {406, "E-UTRA TDD 33 uplink", 1910},
        {421, "E-UTRA TDD 40 downlink", 2350},
        {424, "5GNR n1 FDD UL", 1950},
        {448, "5GNR n29 SDL UL", 0},
        {449, "5GNR n29 SDL DL", 722.5},
        {488, "5GNR n80 SUL UL", 1747.5},
        {489, "5GNR n80 SUL DL", 0},
        {503, "5GNR n90 TDD DL", 2593},
        {506, "5GNR n257 TDD UL", 28000},
        {513, "5GNR n261 TDD DL", 27925},
    };
    for (const Channel& channel : channels) {
        const eParamValue key = static_cast<eParamValue>(channel.value);
        EXPECT_EQ(Parameter::paramValStrings.at(key), channel.text) << channel.value;
        EXPECT_EQ(Parameter::channelFreqMap.at(key), channel.mhz) << channel.value;
    }
    // Every channel has a text, and the runs are exactly the five of the table.
    std::map<eParamValue, std::string> channelTexts;
    for (const auto& [key, mhz] : Parameter::channelFreqMap) {
        channelTexts[key] = Parameter::paramValStrings.at(key);
    }
    const std::vector<std::pair<int, int>> expected = {
        {285, 298}, {301, 365}, {368, 421}, {424, 503}, {506, 513}};
    EXPECT_EQ(Runs(channelTexts), expected);
}

TEST(ParameterTablesTest, EveryNameRoundTripsThroughItsFileText) {
    Parameter probe;
    for (const auto& [name, file] : Parameter::paramNameFILEStrings) {
        Parameter p;
        p.setParName(name);
        EXPECT_EQ(p.GetName(), Parameter::paramNameGUIStrings.at(name));
        p.setValue(1.0);
        Parameter loaded;
        RoundTrip(p, loaded);
        EXPECT_EQ(loaded.getName(), name) << file;
    }
}

TEST(ParameterTablesTest, EveryValueRoundTripsThroughItsFileText) {
    Parameter probe;
    int checked = 0;
    for (const auto& [first, last] : Runs(Parameter::paramValStrings)) {
        sParamDesc range;
        range.limits[0] = first;
        range.limits[1] = last;
        for (int key = first; key <= last; ++key) {
            Parameter p;
            p.setParName(kFreeName);
            p.setDesc(&range);
            p.setValue(static_cast<eParamValue>(key));
            Parameter loaded;
            loaded.setParName(kFreeName);
            RoundTrip(p, loaded, &range);
            eParamValue read = PV_EMPTY;
            EXPECT_EQ(loaded.getStoreType(), PS_EVA) << key;
            EXPECT_TRUE(loaded.getValue(&read));
            // The empty text of 1 leaves the value alone, which is 1 anyway.
            EXPECT_EQ(read, key) << Parameter::paramValStrings.at(static_cast<eParamValue>(key));
            ++checked;
        }
    }
    EXPECT_EQ(checked, 439);
}

TEST(ParameterTablesTest, EveryNumberRoundTripsThroughItsFileText) {
    Parameter probe;
    int checked = 0;
    for (const auto& [first, last] : Runs(Parameter::paramNumStrings)) {
        sParamDesc range;
        range.limits[0] = first;
        range.limits[1] = last;
        for (int key = first; key <= last; ++key) {
            Parameter p;
            p.setParName(kFreeName);
            p.setDesc(&range);
            p.setValue(static_cast<eParamNumber>(key));
            Parameter loaded;
            loaded.setParName(kFreeName);
            RoundTrip(p, loaded, &range);
            eParamNumber read = PNUM_NONE;
            EXPECT_EQ(loaded.getStoreType(), PS_ENU) << key;
            EXPECT_TRUE(loaded.getValue(&read));
            EXPECT_EQ(read, key) << Parameter::paramNumStrings.at(static_cast<eParamNumber>(key));
            ++checked;
        }
    }
    EXPECT_EQ(checked, 265);
}

TEST(ParameterTablesTest, EveryDescriptorTextRoundTrips) {
    Parameter probe;
    for (const auto& [storeType, file] : Parameter::paramStoreTypFILEStrings) {
        if (storeType == PS_NON) continue;
        CElement element;
        element.setAttribute(A_STOTYPE, file);
        Parameter loaded;
        ASSERT_TRUE(loaded.FromXml(&element));
        EXPECT_EQ(loaded.getStoreType(), storeType) << file;
    }
    for (const auto& [type, file] : Parameter::paramTypFILEStrings) {
        for (const auto& [units, unitFile] : Parameter::paramUnitFILEStrings) {
            Parameter p;
            p.setValue(1);
            sParamDesc desc;
            desc.type = type;
            desc.units = units;
            desc.mult = static_cast<eParamMultiplier>(PM_NON + (units % 13));
            p.setDesc(&desc);
            Parameter loaded;
            RoundTrip(p, loaded);
            EXPECT_EQ(loaded.getDesc()->type, type) << file;
            EXPECT_EQ(loaded.getUnits(), units) << unitFile;
            EXPECT_EQ(loaded.getMult(), desc.mult);
        }
    }
}

TEST(ParameterTablesTest, ClearStaticSpaceEmptiesTablesAndTheNextParameterRefills) {
    Parameter::paramStringOptions[PN_MED].push_back("glass");
    Parameter::ClearStaticSpace();
    EXPECT_FALSE(Parameter::loadedStringArrays);
    EXPECT_FALSE(Parameter::channelFreqMapSet);
    EXPECT_TRUE(Parameter::paramValStrings.empty());
    EXPECT_TRUE(Parameter::channelFreqMap.empty());
    EXPECT_TRUE(Parameter::paramStringOptions.empty());
    EXPECT_TRUE(Parameter::paramMultiplierValues.empty());
    Parameter p;
    EXPECT_EQ(Parameter::paramValStrings.size(), 439u);
    EXPECT_EQ(Parameter::paramNumStrings.size(), 265u);
    EXPECT_EQ(Parameter::channelFreqMap.size(), 221u);
}
