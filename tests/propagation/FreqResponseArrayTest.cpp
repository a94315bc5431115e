#include <gtest/gtest.h>

#include "framework/Parameter.h"
#include "propagation/FreqResponse.h"
#include "propagation/FreqResponseArray.h"

namespace {

// A frequency parameter in MHz, as a structure's loss table states it.
struct Mhz {
    explicit Mhz(double value) {
        parameter.setParName(PN_FREQ);
        parameter.setValue(value);
        parameter.setUnits(PU_HZ);
        parameter.setMult(PM_MEGA);
    }
    Parameter parameter;
};

FreqResponse* Entry(FreqResponseArray& array, double mhz, eParamName loss, double value) {
    Mhz frequency(mhz);
    FreqResponse* entry = array.getResponse(&frequency.parameter, true);
    entry->SetParameterValue(loss, value, PU_DB);
    return entry;
}

}  // namespace

TEST(FreqResponseArray, GetResponseFindsOrMakesTheEntryOfAFrequency) {
    FreqResponseArray array;
    Mhz first(2400);
    EXPECT_EQ(array.getResponse(&first.parameter, false), nullptr);
    EXPECT_EQ(array.getResponse(nullptr, true), nullptr);
    FreqResponse* made = array.getResponse(&first.parameter, true);
    ASSERT_NE(made, nullptr);
    EXPECT_DOUBLE_EQ(made->GetFrequency(), 2.4e9);
    EXPECT_EQ(array.getResponse(&first.parameter, true), made);
    EXPECT_EQ(array.size(), 1u);

    // The listed frequency "2400" in MHz is the same frequency; in kHz it is another.
    const auto listed2400 = static_cast<eParamNumber>(238);
    EXPECT_EQ(array.getResponse(listed2400, PM_MEGA, false), made);
    FreqResponse* other = array.getResponse(listed2400, PM_KILO, true);
    ASSERT_NE(other, made);
    EXPECT_DOUBLE_EQ(other->GetFrequency(), 2.4e6);

    // A changed frequency is picked up at the next read.
    made->SetParameterValue(PN_FREQ, 6.0, PU_HZ, PM_GIGA);
    EXPECT_DOUBLE_EQ(made->GetFrequency(), 6e9);
}

TEST(FreqResponseArray, NearestEntryAnswersWithoutInterpolation) {
    FreqResponseArray array;
    EXPECT_FALSE(array.hasParamAtFreq(PN_REFLOSS, 2.4e9));
    EXPECT_DOUBLE_EQ(array.getParamAtFreq(PN_REFLOSS, 2.4e9), -1);

    Entry(array, 2400, PN_REFLOSS, 3);
    Entry(array, 5000, PN_TRANSLOSS, 7);
    Entry(array, 5000 + 2600, PN_REFLOSS, 11);

    EXPECT_TRUE(array.hasParamAtFreq(PN_REFLOSS, 2.5e9));
    EXPECT_DOUBLE_EQ(array.getParamAtFreq(PN_REFLOSS, 3.6e9), 3);
    // The nearest entry lacks transmitLoss, though a farther one has it.
    EXPECT_FALSE(array.hasParamAtFreq(PN_TRANSLOSS, 2.5e9));
    EXPECT_DOUBLE_EQ(array.getParamAtFreq(PN_TRANSLOSS, 2.5e9), -1);
    EXPECT_DOUBLE_EQ(array.getParamAtFreq(PN_TRANSLOSS, 4e9), 7);
    // Halfway between two entries the first one listed counts: 2.4 GHz, then 5 and 7.6.
    EXPECT_FALSE(array.hasParamAtFreq(PN_TRANSLOSS, 3.7e9));
    EXPECT_TRUE(array.hasParamAtFreq(PN_TRANSLOSS, 6.3e9));
    EXPECT_DOUBLE_EQ(array.getParamAtFreq(PN_REFLOSS, 9e9), 11);
}
