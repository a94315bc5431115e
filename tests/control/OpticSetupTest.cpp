#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "control/OpticSetup.h"
#include "propagation/FreqResponseArray.h"

namespace {

// Every preset name, as the menu of new elements lists them.
std::vector<std::string> AllPresetNames() {
    std::vector<std::string> names;
    for (int index = 0; index < 80; index++) {
        const std::string name = OpticElement::GetNewElementName(index);
        if (!name.empty()) names.push_back(name);
    }
    return names;
}

// An element with the preset of that menu index written into it.
struct PresetElement {
    explicit PresetElement(int index) {
        element.Initialize();
        written = element.SetupNewElement(index, nullptr);
    }
    OpticElement element;
    bool written = false;
};

// The table entry a listed value or number holds.
int ListedEntry(Parameter* parameter) {
    sParamDesc* desc = nullptr;
    if (parameter->getStoreType() == PS_EVA) {
        eParamValue value = PV_EMPTY;
        parameter->getValue(&value, &desc);
        return value;
    }
    eParamNumber number = PNUM_NONE;
    parameter->getValue(&number, &desc);
    return number;
}

// The text a choice of the parameter's list would show for its value.
std::string ChoiceText(Parameter* parameter) {
    switch (parameter->getStoreType()) {
        case PS_EVA:
            return Parameter::paramValStrings[static_cast<eParamValue>(ListedEntry(parameter))];
        case PS_ENU:
            return Parameter::paramNumStrings[static_cast<eParamNumber>(ListedEntry(parameter))];
        default:
            return parameter->getValue() != nullptr ? parameter->getValue() : "";
    }
}

// False when the parameter offers a list of choices and its value is not one of them.
bool IsListed(Parameter* parameter) {
    std::vector<std::string> options;
    bool isNumber = false;
    if (!parameter->GetValueOptions(options, isNumber)) return true;
    return std::find(options.begin(), options.end(), ChoiceText(parameter)) != options.end();
}

TEST(OpticSetupTest, ANewBuildingHasWhatARunNeeds) {
    PresetElement building(OpticElement::GetNewElementIndex("Building"));
    ASSERT_TRUE(building.written);
    OpticElement& system = building.element;

    double frequency = 0;
    ASSERT_TRUE(system.GetParameterValue(PN_FREQ, frequency));
    EXPECT_DOUBLE_EQ(frequency, 2.4e9);
    double power = 0;
    ASSERT_TRUE(system.GetParameterValue(PN_PWRWATT, power));
    EXPECT_DOUBLE_EQ(power, 0.02);
    int traceLimit = 0;
    ASSERT_TRUE(system.GetParameterValue(PN_TRLIM, traceLimit));
    EXPECT_EQ(traceLimit, 5);
    for (FreqResponseArray* table :
         {system.GetWallResponse(), system.GetFloorResponse(), system.GetCeilingResponse()}) {
        ASSERT_NE(table, nullptr);
        EXPECT_FALSE(table->empty());
    }

    eParamValue type = PV_EMPTY;
    ASSERT_TRUE(system.GetParameterValue(PN_TYP, type));
    EXPECT_EQ(type, PV_ELEM_SYSTEM);
    eParamValue systemType = PV_EMPTY;
    ASSERT_TRUE(system.GetParameterValue(PN_SYSTYP, systemType));
    EXPECT_EQ(systemType, PV_BUILDING);
    EXPECT_TRUE(system.TestParameterValue(PN_VOLPROPMDL, PV_INH_LOS));
    EXPECT_TRUE(system.TestParameterValue(PN_BARTRNMDL, PV_TRANSMIT_CONDUCTIVE));
    EXPECT_EQ(system.GetParameterp(PN_FREQ)->getMult(), PM_MEGA);
    EXPECT_EQ(system.GetParameterp(PN_TRACEDIM)->getStoreType(), PS_ENU);

    // The floor of the trace is written as a whole number of decibels.
    Parameter* minPower = system.GetParameterp(PN_TRCMIN);
    ASSERT_NE(minPower, nullptr);
    EXPECT_EQ(minPower->getStoreType(), PS_INT);
    EXPECT_EQ(minPower->getUnits(), PU_DB);
    int floor = 0;
    ASSERT_TRUE(system.GetParameterValue(PN_TRCMIN, floor));
    EXPECT_EQ(floor, -150);
    CElement saved;
    ASSERT_TRUE(minPower->ToXml(&saved, false));
    EXPECT_STREQ(saved.getAttributeValue(A_STOTYPE), "PS_INT");
    EXPECT_STREQ(saved.getAttributeValue(A_UNITS), "PU_DB");
}

TEST(OpticSetupTest, CitiesTakeTheCityColumn) {
    OpticElement city;
    city.Initialize();
    ASSERT_TRUE(OpticSetup::SetupSystem("suburban city", &city));
    EXPECT_TRUE(city.TestParameterValue(PN_SYSTYP, PV_URBAN_CITY));
    EXPECT_TRUE(city.TestParameterValue(PN_VOLPROPMDL, PV_UMI_LOS));
    EXPECT_TRUE(city.TestParameterValue(PN_BARTRNMDL, PV_TRANSMIT_OFF));
    int traceLimit = 0;
    ASSERT_TRUE(city.GetParameterValue(PN_TRLIM, traceLimit));
    EXPECT_EQ(traceLimit, 4);
    EXPECT_EQ(city.GetParameterp(PN_SHOWFPLAN), nullptr);
}

TEST(OpticSetupTest, EveryPresetWritesValuesOfItsLists) {
    const std::vector<std::string> names = AllPresetNames();
    ASSERT_EQ(names.size(), 55u);
    for (const std::string& name : names) {
        PresetElement preset(OpticElement::GetNewElementIndex(name));
        ASSERT_TRUE(preset.written) << name;
        OpticElement& element = preset.element;
        ASSERT_NE(element.GetParameterp(PN_TYP), nullptr) << name;
        for (Parameter* parameter : element.GetQuickParameters()) {
            // Texts name entries of the lists; numbers are written as they stand.
            const eParamStoreType stored = parameter->getStoreType();
            if (stored == PS_STR || stored == PS_EVA || stored == PS_ENU) {
                EXPECT_TRUE(IsListed(parameter)) << name << ": " << parameter->GetName();
            }
            int first = 0;
            int last = 0;
            if ((stored == PS_EVA || stored == PS_ENU) && parameter->getParamLimits(first, last)) {
                const int entry = ListedEntry(parameter);
                EXPECT_GE(entry, first) << name << ": " << parameter->GetName();
                EXPECT_LE(entry, last) << name << ": " << parameter->GetName();
            }
        }
    }
}

TEST(OpticSetupTest, PresetsFollowTheirNames) {
    OpticElement source;
    source.Initialize();
    ASSERT_TRUE(OpticSetup::SetupSource("PlanarCross", &source));
    int arms = 0;
    ASSERT_TRUE(source.GetParameterValue(PN_ARMS, arms));
    EXPECT_EQ(arms, 5);
    EXPECT_TRUE(source.TestParameterValue(PN_LAY, PV_STAR));
    double wavelength = 0;
    ASSERT_TRUE(source.GetParameterValue(PN_LMDA, wavelength));
    EXPECT_NEAR(wavelength, 1e-6, 1e-15);

    OpticElement traceVolume;
    traceVolume.Initialize();
    ASSERT_TRUE(OpticSetup::SetupTRACEVolume("TraceVolume - 100mm", &traceVolume));
    double gap = 0;
    ASSERT_TRUE(traceVolume.GetParameterValue(PN_TRACEGAP, gap));
    EXPECT_NEAR(gap, 0.1, 1e-12);
    ASSERT_NE(traceVolume.GetWallResponse(), nullptr);
    EXPECT_DOUBLE_EQ(traceVolume.GetWallResponse()->getParamAtFreq(PN_GAINRX, 5e9), 4.0);
    EXPECT_DOUBLE_EQ(traceVolume.GetWallResponse()->getParamAtFreq(PN_GAINRX, 2.4e9), 2.0);

    OpticElement solver;
    solver.Initialize();
    ASSERT_TRUE(OpticSetup::SetupFDTDVolume("FDTDVolume - 10um", &solver));
    double cell = 0;
    double step = 0;
    ASSERT_TRUE(solver.GetParameterValue(PN_FDTDGAP, cell));
    ASSERT_TRUE(solver.GetParameterValue(PN_TMSTP, step));
    EXPECT_NEAR(cell, 1e-5, 1e-15);
    EXPECT_LT(step * 3e8, cell / std::sqrt(2.0));

    // A name of another family, or none, writes nothing.
    OpticElement untouched;
    untouched.Initialize();
    EXPECT_FALSE(OpticSetup::SetupMirror("Building", &untouched));
    EXPECT_FALSE(OpticSetup::SetupSystem("Sphere", &untouched));
    EXPECT_FALSE(OpticSetup::SetupTRACEVolume("TraceVolume - 2m", &untouched));
    EXPECT_FALSE(OpticSetup::SetupSource(13, &untouched));
    EXPECT_FALSE(OpticSetup::SetupSource("Point360deg", nullptr));
    EXPECT_TRUE(untouched.GetQuickParameters().empty());
}

}  // namespace
