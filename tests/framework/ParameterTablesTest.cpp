// The static tables of Parameter: the system's own texts, and the round trip of every name,
// value, number and channel between its number and its file text.
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

// Every key of table, stored in a parameter without limits of its own (so that each run's
// limits decide the lookup), comes back from the file with storeType and its own value.
// Returns the number of keys checked.
template <typename K>
int RoundTripEveryKey(const std::map<K, std::string>& table, eParamStoreType storeType) {
    int checked = 0;
    for (const auto& [first, last] : Runs(table)) {
        sParamDesc range;
        range.limits[0] = first;
        range.limits[1] = last;
        for (int key = first; key <= last; ++key) {
            Parameter p;
            p.setParName(PN_VAL);
            p.setDesc(&range);
            p.setValue(static_cast<K>(key));
            Parameter loaded;
            loaded.setParName(PN_VAL);
            RoundTrip(p, loaded, &range);
            K read{};
            EXPECT_EQ(loaded.getStoreType(), storeType) << key;
            EXPECT_TRUE(loaded.getValue(&read));
            EXPECT_EQ(read, key) << table.at(static_cast<K>(key));
            ++checked;
        }
    }
    return checked;
}

}  // namespace

TEST(ParameterTablesTest, TextsAreTheSystemsOwn) {
    Parameter p;
    EXPECT_EQ(Parameter::paramGroupStrings[PG_UNK], "error - unkown group");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_VOLTYP], "vlumeType");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_RELPERM], "relativePermitivity");
    EXPECT_EQ(Parameter::paramNameGUIStrings[PN_PWRDB], "power");
    EXPECT_EQ(Parameter::paramValStrings[static_cast<eParamValue>(160)],
              "(In building) WINNER II A1 ");
    EXPECT_EQ(Parameter::paramValStrings.count(static_cast<eParamValue>(3)), 0u);
    EXPECT_EQ(Parameter::paramNumStrings[static_cast<eParamNumber>(313)], "+1000");
    EXPECT_EQ(Parameter::paramUnitGUIStrings[PU_LMD], "lamda");
}

TEST(ParameterTablesTest, NumbersAndMultipliersHaveTheirValues) {
    Parameter p;
    const auto& values = Parameter::paramNumValues;
    // Every number text has a value but the zeros at the head of a group.
    EXPECT_EQ(values.size(), 252u);
    for (int head : {8, 15, 28, 72, 82, 95, 105, 118, 131, 144, 166, 179, 245}) {
        EXPECT_EQ(values.count(static_cast<eParamNumber>(head)), 0u) << head;
    }
    for (const auto& [number, text] : Parameter::paramNumStrings) {
        if (values.count(number) == 0 || number == PNUM_NONE) continue;
        EXPECT_DOUBLE_EQ(values.at(number), std::stod(text)) << text;
    }
    const std::pair<eParamMultiplier, double> factors[] = {
        {PM_ATTO, 1e-18}, {PM_MICRO, 1e-6}, {PM_ONE, 1}, {PM_MEGA, 1e6}, {PM_PETA, 1e15}};
    for (const auto& [mult, factor] : factors) {
        EXPECT_EQ(Parameter::paramMultiplierValues.at(mult), factor);
    }
    EXPECT_EQ(Parameter::paramMultiplierStrings.at(PM_MICRO), "u");
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
        {298, "14", 2484},
        {309, "36", 5180},
        {405, "E-UTRA FDD 21 downlink", 1503.4},
        {448, "5GNR n29 SDL UL", 0},
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

TEST(ParameterTablesTest, EveryNameValueAndNumberRoundTripsThroughItsFileText) {
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
    EXPECT_EQ(RoundTripEveryKey(Parameter::paramValStrings, PS_EVA), 439);
    EXPECT_EQ(RoundTripEveryKey(Parameter::paramNumStrings, PS_ENU), 265);
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
    Parameter p;
    EXPECT_EQ(Parameter::paramNameFILEStrings.size(), 209u);
    EXPECT_EQ(Parameter::paramValStrings.size(), 439u);
    EXPECT_EQ(Parameter::paramNumStrings.size(), 265u);
    EXPECT_EQ(Parameter::channelFreqMap.size(), 221u);
}
