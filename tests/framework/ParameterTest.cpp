// Values of a Parameter: store types and their cross reads, scaling by multipliers, tests,
// choices, captions, copies and comparison.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "documents/CElement.h"
#include "framework/Component.h"
#include "framework/Parameter.h"

namespace {

sParamDesc Desc(eParamMultiplier mult, eParamUnits units = PU_NON) {
    sParamDesc desc;
    desc.mult = mult;
    desc.units = units;
    return desc;
}

// Everything a parameter gives when read as each kind.
struct Reads {
    bool okString, okInt, okFloat, okDouble, okBool;
    std::string text;
    int i = 0;
    float f = 0;
    double d = 0;
    bool b = false;
};

Reads ReadAll(Parameter& p) {
    Reads r{};
    r.okString = p.getValue(&r.text);
    r.okInt = p.getValue(&r.i);
    r.okFloat = p.getValue(&r.f);
    r.okDouble = p.getValue(&r.d);
    r.okBool = p.getValue(&r.b);
    return r;
}

std::vector<std::string> Offer(Parameter& p, bool* isNumber = nullptr) {
    std::vector<std::string> out;
    bool number = false;
    p.GetValueOptions(out, number);
    if (isNumber != nullptr) *isNumber = number;
    return out;
}

}  // namespace

TEST(ParameterTest, NewParameterHoldsNothing) {
    Parameter p;
    const Reads r = ReadAll(p);
    EXPECT_FALSE(r.okString || r.okInt || r.okFloat || r.okDouble || r.okBool);
    eParamValue v;
    EXPECT_FALSE(p.getValue(&v));
    EXPECT_EQ(p.getValue(), nullptr);
    EXPECT_FALSE(p.passThroughStoreTypes());
    EXPECT_FALSE(p.testValue(0));
}

TEST(ParameterTest, EachStoreTypeReadsAsEveryKind) {
    Parameter p;
    p.setValue(2.75);
    EXPECT_EQ(p.getStoreType(), PS_DBL);
    Reads r = ReadAll(p);
    EXPECT_TRUE(r.okString && r.okInt && r.okFloat && r.okDouble && r.okBool);
    EXPECT_EQ(r.text, "2.75");
    EXPECT_EQ(r.i, 2);
    EXPECT_EQ(r.f, 2.75f);
    EXPECT_EQ(r.d, 2.75);
    EXPECT_TRUE(r.b);

    p.setValue(-1.5f);
    EXPECT_EQ(p.getStoreType(), PS_FLT);
    r = ReadAll(p);
    EXPECT_EQ(r.text, "-1.5");
    EXPECT_EQ(r.i, -1);
    EXPECT_EQ(r.d, -1.5);

    p.setValue(42);
    EXPECT_EQ(p.getStoreType(), PS_INT);
    r = ReadAll(p);
    EXPECT_EQ(r.text, "42");
    EXPECT_EQ(r.f, 42.0f);
    EXPECT_EQ(r.d, 42.0);
    EXPECT_TRUE(r.b);
    p.setValue(0);
    EXPECT_FALSE(ReadAll(p).b);

    p.setValue(std::string("3.5"));
    EXPECT_EQ(p.getStoreType(), PS_STR);
    r = ReadAll(p);
    EXPECT_EQ(r.i, 3);
    EXPECT_EQ(r.f, 3.5f);
    EXPECT_EQ(r.d, 3.5);
    EXPECT_FALSE(r.b);
    EXPECT_STREQ(p.getValue(), "3.5");

    p.setValue(static_cast<const char*>(nullptr));
    EXPECT_EQ(p.getStoreType(), PS_STR);
    EXPECT_STREQ(p.getValue(), "");

    p.setValue(true);
    EXPECT_EQ(p.getStoreType(), PS_BOL);
    r = ReadAll(p);
    EXPECT_TRUE(r.okBool && r.b);
    EXPECT_EQ(r.text, "true");
    EXPECT_EQ(r.i, 1);
    p.setValue(false);
    EXPECT_STREQ(p.getValue(), "false");
}

TEST(ParameterTest, EnumeratedStoreTypesReadAsEveryKind) {
    Parameter p;
    p.setParName(PN_RDET);  // values 36..40
    p.setValue(static_cast<eParamValue>(38));
    EXPECT_EQ(p.getStoreType(), PS_EVA);
    EXPECT_STREQ(p.getValue(), "medium");
    bool b = true;
    EXPECT_TRUE(p.getValue(&b));
    EXPECT_FALSE(b);

    Parameter flag;
    flag.setParName(PN_SYSOUT);
    flag.setValue(PV_TRUE);
    EXPECT_TRUE(flag.getValue(&b));
    EXPECT_TRUE(b);
    EXPECT_STREQ(flag.getValue(), "true");

    Parameter n;
    n.setParName(PN_SIZ);  // numbers 118..128
    n.setValue(static_cast<eParamNumber>(126));
    EXPECT_EQ(n.getStoreType(), PS_ENU);
    Reads r = ReadAll(n);
    EXPECT_EQ(r.d, 200.0);
    EXPECT_TRUE(r.b);
    EXPECT_EQ(r.text, "200");
    n.setValue(static_cast<eParamNumber>(118));  // the head "0" has no value entry
    r = ReadAll(n);
    EXPECT_EQ(r.d, 0.0);
    EXPECT_FALSE(r.b);
    eParamNumber number = PNUM_NONE;
    EXPECT_TRUE(n.getValue(&number));
    EXPECT_EQ(number, 118);
}

TEST(ParameterTest, StringFindsValueAndNumberWithinLimits) {
    Parameter p;
    p.setParName(PN_RDET);
    p.setValue(std::string("high"));
    eParamValue v = PV_EMPTY;
    EXPECT_TRUE(p.getValue(&v));
    EXPECT_EQ(v, 39);
    // "veryLow" also names 203; the limits pick 36.
    p.setValue("veryLow");
    EXPECT_TRUE(p.getValue(&v));
    EXPECT_EQ(v, 36);

    Parameter n;
    n.setParName(PN_ANG);  // numbers 194..201
    n.setValue("45");
    eParamNumber number = PNUM_NONE;
    EXPECT_TRUE(n.getValue(&number));
    EXPECT_EQ(number, 198);

    // Without limits the string sets neither.
    Parameter free;
    free.setValue(PV_FALSE);
    free.setValue("true");
    EXPECT_TRUE(free.getValue(&v));
    EXPECT_EQ(v, PV_FALSE);

    // An enumerated value outside the name's limits is ignored.
    p.setValue(static_cast<eParamValue>(38));
    EXPECT_TRUE(p.setValue(static_cast<eParamValue>(200)));
    EXPECT_TRUE(p.testValue(static_cast<eParamValue>(38)));
    n.setValue(static_cast<eParamNumber>(198));
    EXPECT_TRUE(n.setValue(static_cast<eParamNumber>(300)));
    EXPECT_TRUE(n.testValue(static_cast<eParamNumber>(198)));
}

TEST(ParameterTest, ScaledReadsAndTests) {
    Parameter p;
    sParamDesc kilo = Desc(PM_KILO, PU_M);
    sParamDesc* in = &kilo;
    p.setValue(2.5, &in);
    double d = 0;
    EXPECT_TRUE(p.getValue(&d));
    EXPECT_EQ(d, 2500.0);
    sParamDesc* out = nullptr;
    EXPECT_TRUE(p.getValue(&d, &out));
    EXPECT_EQ(d, 2.5);
    EXPECT_EQ(out->mult, PM_KILO);
    EXPECT_TRUE(p.testValue(2500.0));
    EXPECT_FALSE(p.testValue(2.5));
    EXPECT_TRUE(p.testValue(2.5, &kilo));
    sParamDesc mega = Desc(PM_MEGA);
    EXPECT_TRUE(p.testValue(0.0025, &mega));
    EXPECT_TRUE(p.testClose(2500.5, 1.0));
    EXPECT_FALSE(p.testClose(2502.0, 1.0));
    EXPECT_TRUE(p.testClose(2.501, 1.0, &kilo));
    int i = 0;
    EXPECT_TRUE(p.getValue(&i));
    EXPECT_EQ(i, 2000);  // the int form is the truncated 2, scaled

    Parameter millis;
    millis.setValue(1500);
    millis.setMult(PM_MILLI);
    EXPECT_TRUE(millis.getValue(&i));
    EXPECT_EQ(i, 1);
    EXPECT_TRUE(millis.testClose(2, 1));
    EXPECT_FALSE(millis.testClose(3, 1));
    EXPECT_TRUE(millis.testValue(1.5));
    EXPECT_TRUE(millis.testClose(1.4f, 0.11f));

    Parameter plain;
    plain.setValue(1.7);
    EXPECT_TRUE(plain.getValue(&i));
    EXPECT_EQ(i, 1);
    plain.setMult(PM_ONE);
    EXPECT_TRUE(plain.testValue(1.7));
}

TEST(ParameterTest, StringTrueReadsTrueAndOneReadsFalse) {
    Parameter p;
    p.setValue("true");
    bool b = false;
    EXPECT_TRUE(p.getValue(&b));
    EXPECT_TRUE(b);
    p.setValue("1");
    EXPECT_TRUE(p.getValue(&b));
    EXPECT_FALSE(b);
    EXPECT_TRUE(p.testValue("1"));
    EXPECT_TRUE(p.testValue(std::string("1")));
    EXPECT_FALSE(p.testValue(static_cast<const char*>(nullptr)));
    EXPECT_TRUE(p.testValue(false));
}

TEST(ParameterTest, SetValueCopiesAGivenDescriptor) {
    Parameter p;
    sParamDesc desc = Desc(PM_MICRO, PU_S);
    desc.type = PT_TIM;
    sParamDesc* in = &desc;
    p.setValue(3, &in);
    EXPECT_EQ(p.getMult(), PM_MICRO);
    EXPECT_EQ(p.getUnits(), PU_S);
    EXPECT_EQ(p.getDesc()->type, PT_TIM);
    sParamDesc* none = nullptr;
    p.setValue(4, &none);
    EXPECT_EQ(p.getMult(), PM_MICRO);
    p.setDesc(nullptr);
    EXPECT_EQ(p.getUnits(), PU_S);
}

TEST(ParameterTest, NameSetsTypeOptionsGroupLimitsAndFlags) {
    struct Row {
        eParamName name;
        eParamType type;
        eParamOptions options;
        eParamGroup group;
        int first, last;
        bool includeZero, showOptions;
    };
    const Row rows[] = {
        {PN_TYP, PT_INV, PO_VALUES, PG_UNK, 1, 549, true, false},
        {PN_SIZ, PT_DIST, PO_NUM_1000, PG_GENERAL, 118, 128, false, true},
        {PN_SNSIZ, PT_DIST, PO_NUM_10_FRACT, PG_GENERAL, 72, 79, true, true},
        {PN_THICKNESS, PT_DIST, PO_NUM_1000, PG_GENERAL, 118, 128, true, true},
        {PN_ORIENTATION, PT_INV, PO_VALUES, PG_UNK, 125, 126, true, false},
        {PN_TRACECHAN, PT_FRQ, PO_STRINGS, PG_SIGNAL, -1, -1, true, true},
        {PN_RDET, PT_OTH, PO_VALUES, PG_RENDER, 36, 40, false, true},
        {PN_FREQ, PT_FRQ, PO_NUM_FREQ_MHZ, PG_SIGNAL, 228, 242, false, true},
        {PN_PWRDB, PT_PWR, PO_NUM_PM100, PG_SIGNAL, 276, 290, true, true},
        {PN_TRCMIN, PT_PWR, PO_NUM_PM1000, PG_RAYTRACING, 293, 313, true, true},
        {PN_SYSTYP, PT_OTH, PO_FREE, PG_UNK, 4, 33, true, true},
        {PN_SYSOUT, PT_BOOL, PO_VALUES, PG_UNK, 547, 548, true, true},
        {PN_FNAM, PT_OTH, PO_FILE, PG_GENERAL, -1, -1, true, true},
        {PN_FDTDDIM, PT_OTH, PO_NUM_DIMS, PG_FDTD, 3, 5, true, true},
    };
    for (const Row& row : rows) {
        Parameter p;
        p.setParName(row.name);
        const std::string& file = Parameter::paramNameFILEStrings.at(row.name);
        EXPECT_EQ(p.getDesc()->type, row.type) << file;
        EXPECT_EQ(p.getOptionsType(), row.options) << file;
        EXPECT_EQ(p.getGroup(), row.group) << file;
        int first = 0, last = 0;
        p.getParamLimits(first, last);
        EXPECT_EQ(first, row.first) << file;
        EXPECT_EQ(last, row.last) << file;
        EXPECT_EQ(p.getIncludeZero(), row.includeZero) << file;
        EXPECT_EQ(p.getShowOptions(), row.showOptions) << file;
    }
    // Hidden from the data tree.
    for (eParamName name : {PN_SYSTYP, PN_SYSOUT, PN_SIZ}) {
        Parameter p;
        p.setParName(name);
        EXPECT_EQ(p.ShowInDataTree(), name == PN_SIZ) << name;
    }
}

TEST(ParameterTest, EveryNameHasAGroupAndNumberKindsTheirRange) {
    for (int n = PN_UNK; n <= PN_SHOWFPLAN; ++n) {
        Parameter p;
        p.setParName(static_cast<eParamName>(n));
        EXPECT_GE(p.getGroup(), PG_UNK);
        EXPECT_LE(p.getGroup(), PG_MAPPING);
        if (p.getOptionsType() >= PO_NUM_DIMS && p.getOptionsType() <= PO_NUM_PM1000) {
            int first = 0, last = 0;
            EXPECT_TRUE(p.getParamLimits(first, last)) << n;
            EXPECT_TRUE(Parameter::paramNumStrings.count(static_cast<eParamNumber>(last))) << n;
        }
    }
    // A name resets what an earlier name set.
    Parameter p;
    p.setParName(PN_TYP);
    p.setParName(PN_UNK);
    EXPECT_EQ(p.getOptionsType(), PO_FREE);
    EXPECT_TRUE(p.getShowOptions());
    EXPECT_EQ(p.getGroup(), PG_UNK);
}

TEST(ParameterTest, ValueOptionsOfEachKind) {
    bool isNumber = true;
    Parameter detail;
    detail.setParName(PN_RDET);
    EXPECT_EQ(Offer(detail, &isNumber),
              (std::vector<std::string>{"veryLow", "low", "medium", "high", "veryHigh"}));
    EXPECT_FALSE(isNumber);
    EXPECT_TRUE(detail.AddOption("coarse"));
    EXPECT_TRUE(detail.AddOption("fine"));
    EXPECT_FALSE(detail.AddOption("fine"));
    EXPECT_EQ(Offer(detail), (std::vector<std::string>{"coarse", "fine"}));
    detail.ClearOptions();
    EXPECT_EQ(Offer(detail).size(), 5u);

    // "type" hides its own options and offers the whole value table.
    Parameter type;
    type.setParName(PN_TYP);
    type.AddOption("mine");
    EXPECT_EQ(Offer(type).size(), 439u);

    // Strings: the table of the name first, then the object's own.
    Parameter medium;
    medium.setParName(PN_MED);
    EXPECT_TRUE(Offer(medium).empty());
    medium.AddOption("concrete");
    EXPECT_EQ(Offer(medium), (std::vector<std::string>{"concrete"}));
    Parameter::paramStringOptions[PN_MED] = {"Vacuum/ air", "glass"};
    EXPECT_EQ(Offer(medium), (std::vector<std::string>{"Vacuum/ air", "glass"}));
    Parameter::paramStringOptions.erase(PN_MED);

    for (eParamName name : {PN_FNAM, PN_DNAM, PN_NAM}) {
        Parameter none;
        none.setParName(name);
        std::vector<std::string> out;
        EXPECT_FALSE(none.GetValueOptions(out, isNumber));
        EXPECT_TRUE(out.empty());
    }

    // Numbers: includeZero decides about the head "0".
    Parameter size;  // includeZero false
    size.setParName(PN_SIZ);
    EXPECT_EQ(Offer(size, &isNumber), (std::vector<std::string>{"1", "2", "5", "10", "20", "50",
                                                                "100", "200", "500", "1000"}));
    EXPECT_TRUE(isNumber);
    Parameter thickness;  // includeZero true
    thickness.setParName(PN_THICKNESS);
    EXPECT_EQ(Offer(thickness).size(), 11u);
    EXPECT_EQ(Offer(thickness).front(), "0");
    Parameter angle;  // the range 194..201 starts before its first entry
    angle.setParName(PN_ANG);
    EXPECT_EQ(Offer(angle), (std::vector<std::string>{"1", "5", "15", "45", "90", "180", "360"}));
}

TEST(ParameterTest, CaptionsShowValueAndUnit) {
    Parameter frequency;
    frequency.setParName(PN_FREQ);
    frequency.setValue(2400);
    frequency.setMult(PM_MEGA);
    frequency.setUnits(PU_HZ);
    EXPECT_EQ(frequency.captionVal(), "2400");
    EXPECT_EQ(frequency.captionUnit(), "MHz");
    CElement element;
    frequency.UpdateCaption(&element);
    EXPECT_STREQ(element.getAttributeValue(A_CAPT), "frequency = 2400 MHz");

    Parameter file;
    file.setParName(PN_FNAM);
    file.setValue("/home/user/models/office.xml");
    EXPECT_EQ(file.captionVal(), "office.xml");
    file.UpdateCaption(&element);
    EXPECT_STREQ(element.getAttributeValue(A_CAPT), "fileLocation = office.xml ");

    Parameter empty;
    empty.setParName(PN_SIZ);
    EXPECT_EQ(empty.captionVal(), "");
    empty.UpdateCaption(&element);
    EXPECT_STREQ(element.getAttributeValue(A_CAPT), "size");
}

TEST(ParameterTest, CopyTakesValueAsTextMultiplierAndIndex) {
    Parameter source;
    source.setParName(PN_PWRWATT);
    source.setValue(20.0);
    source.setMult(PM_MILLI);
    source.setUnits(PU_WAT);
    source.SetIndex(3);
    Parameter target;
    target.setParName(PN_PWRWATT);
    EXPECT_TRUE(target.Copy(&source));
    EXPECT_EQ(target.getStoreType(), PS_STR);
    EXPECT_STREQ(target.getValue(), "20");
    EXPECT_EQ(target.getMult(), PM_MILLI);
    EXPECT_EQ(target.GetIndex(), 3);
    EXPECT_EQ(target.getUnits(), PU_NON);
    EXPECT_TRUE(target.testValue(0.02));

    Parameter nothing;
    EXPECT_FALSE(target.Copy(&nothing));
    EXPECT_FALSE(target.Copy(nullptr));
}

TEST(ParameterTest, CopyConstructionKeepsEverything) {
    Parameter source;
    source.setParName(PN_RDET);
    source.setValue(static_cast<eParamValue>(37));
    source.setUnits(PU_M);
    source.SetIndex(2);
    source.AddOption("extra");
    Parameter copy(source);
    EXPECT_TRUE(copy.CheckEq(&source));
    EXPECT_EQ(copy.GetName(), "renderDetail");
    EXPECT_STREQ(copy.getValue(), "low");
    source.ClearOptions();
    EXPECT_FALSE(copy.CheckEq(&source));
}

TEST(ParameterTest, CheckEqComparesTheMasterValue) {
    Parameter a, b;
    a.setParName(PN_SIZ);
    b.setParName(PN_SIZ);
    a.setValue(1.5);
    b.setValue(1.5);
    EXPECT_TRUE(a.CheckEq(&b));
    a.getValue();  // derived fields do not count
    EXPECT_TRUE(a.CheckEq(&b));
    b.setValue(1.5000001);
    EXPECT_TRUE(a.CheckEq(&b));  // within the six decimals of a file
    b.setValue(1.6);
    EXPECT_FALSE(a.CheckEq(&b));
    b.setValue(1.5f);
    EXPECT_FALSE(a.CheckEq(&b));
    b.setValue(1.5);
    b.setMult(PM_KILO);
    EXPECT_FALSE(a.CheckEq(&b));
    b.setMult(PM_NON);
    b.SetIndex(1);
    EXPECT_FALSE(a.CheckEq(&b));
    b.SetIndex(-1);
    b.setParName(PN_WID);
    EXPECT_FALSE(a.CheckEq(&b));
    EXPECT_FALSE(a.CheckEq(static_cast<Parameter*>(nullptr)));
}

TEST(ParameterTest, TablesFillOnceUnderConcurrentConstruction) {
    Parameter::ClearStaticSpace();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 20; ++i) {
                Parameter p;
                p.setParName(PN_FREQCHAN);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(Parameter::paramValStrings.size(), 439u);
    EXPECT_EQ(Parameter::channelFreqMap.size(), 221u);
    EXPECT_EQ(Parameter::paramNameGUIStrings.size(), 210u);
}

namespace {

// The root of a system, as far as the re-simulation rule looks at it.
class SystemRoot : public Component {
public:
    explicit SystemRoot(eParamValue systemType) {
        objTypeStr = "OpticElement";
        SetParameterValue(PN_SYSTYP, systemType);
    }
};

// The re-simulation flag of a parameter that knows its parent before its name.
bool ReSimUnder(Component* parent, eParamName name) {
    Parameter p;
    p.SetParent(parent);
    p.setParName(name);
    return p.ReSimOnChange();
}

}  // namespace

TEST(ParameterTest, ReSimulationDependsOnTheSystemType) {
    SystemRoot building(PV_BUILDING);
    SystemRoot city(PV_URBAN_CITY);
    SystemRoot suburb(PV_SUBURBAN_CITY);
    for (eParamName name :
         {PN_THICKNESS, PN_TRACECHAN, PN_FREQ, PN_FREQBAND, PN_FREQCHAN, PN_PWRWATT, PN_PWRDB,
          PN_HPBWH, PN_HPBWV, PN_GAINROT, PN_GAINTLT, PN_SCLL, PN_SCLH, PN_TRLIM, PN_REFLIM,
          PN_TRANLIM, PN_TCNT, PN_RXPWRSCL}) {
        EXPECT_FALSE(ReSimUnder(&building, name)) << name;
        EXPECT_TRUE(ReSimUnder(&city, name)) << name;
    }
    EXPECT_FALSE(ReSimUnder(&building, PN_CNT));
    EXPECT_FALSE(ReSimUnder(&city, PN_CNT));
    EXPECT_FALSE(ReSimUnder(&suburb, PN_CNT));
    EXPECT_TRUE(ReSimUnder(&suburb, PN_FREQ));
    EXPECT_TRUE(ReSimUnder(&building, PN_SIZ));
    for (eParamName name :
         {PN_RPATCOLOR, PN_FDTDREND, PN_TRACEREND, PN_FDTDRENDPROP, PN_COLSCA, PN_COLSCATYP}) {
        EXPECT_FALSE(ReSimUnder(&city, name)) << name;
    }

    // Only an OpticElement counts, and only when the parent is known before the name.
    Component plain;
    plain.SetParameterValue(PN_SYSTYP, PV_BUILDING);
    EXPECT_TRUE(ReSimUnder(&plain, PN_THICKNESS));
    Parameter late;
    late.setParName(PN_THICKNESS);
    late.SetParent(&building);
    EXPECT_TRUE(late.ReSimOnChange());
    // A later rule-1 name under another system sets the flag true again.
    late.SetParent(&city);
    late.setParName(PN_FREQ);
    EXPECT_TRUE(late.ReSimOnChange());
    late.SetParent(nullptr);
}
