// A Parameter written into an element tree and read back, in memory and through XML text.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "documents/CElement.h"
#include "documents/Document.h"
#include "framework/Parameter.h"

namespace {

// Through the text of a document, as a file would carry it.
bool ThroughText(Parameter& p, Parameter& loaded) {
    Document out;
    if (!p.ToXml(&out, false)) return false;
    std::string text;
    if (!out.writeToString(text)) return false;
    Document in;
    char* end = nullptr;
    if (!in.readFromCharArray(text.c_str(), &end)) return false;
    return loaded.FromXml(&in);
}

void ExpectSame(Parameter& loaded, Parameter& p) {
    EXPECT_EQ(loaded.getStoreType(), p.getStoreType());
    EXPECT_EQ(loaded.getName(), p.getName());
    EXPECT_EQ(loaded.getUnits(), p.getUnits());
    EXPECT_EQ(loaded.getMult(), p.getMult());
    EXPECT_EQ(loaded.GetIndex(), p.GetIndex());
    EXPECT_EQ(loaded.getDesc()->type, p.getDesc()->type);
    EXPECT_TRUE(loaded.CheckEq(&p));
}

}  // namespace

TEST(ParameterXmlTest, EveryStoreTypeLoadsBackIdentical) {
    std::vector<Parameter*> made;
    auto make = [&made](eParamName name) {
        Parameter* p = new Parameter();
        p->setParName(name);
        made.push_back(p);
        return p;
    };
    make(PN_RDET)->setValue(static_cast<eParamValue>(39));
    make(PN_PWRDB)->setValue(static_cast<eParamNumber>(281));  // "-2"
    make(PN_FNAM)->setValue("/data/site plan.xml");
    Parameter* dbl = make(PN_SIZ);
    dbl->setValue(2.5);
    dbl->setMult(PM_KILO);
    dbl->setUnits(PU_M);
    Parameter* flt = make(PN_RAYGAP);
    flt->setValue(0.25f);
    flt->setUnits(PU_D);
    Parameter* num = make(PN_TRCMIN);
    num->setValue(-150);
    num->setUnits(PU_DB);
    num->SetIndex(4);
    make(PN_SHOW)->setValue(true);
    make(PN_RENDGRD)->setValue(false);

    for (Parameter* p : made) {
        SCOPED_TRACE(Parameter::paramNameFILEStrings.at(p->getName()));
        Parameter inMemory;
        CElement element;
        ASSERT_TRUE(p->ToXml(&element, false));
        EXPECT_EQ(element.getName(), "Parameter");
        ASSERT_TRUE(inMemory.FromXml(&element));
        ExpectSame(inMemory, *p);
        Parameter viaText;
        ASSERT_TRUE(ThroughText(*p, viaText));
        ExpectSame(viaText, *p);
    }
    for (Parameter* p : made) delete p;
}

TEST(ParameterXmlTest, AttributesCarryTheFileTextsAndSavingAgainResetsThem) {
    Parameter p;
    p.setParName(PN_SIZ);
    p.setValue(2.5);
    p.setMult(PM_KILO);
    p.setUnits(PU_M);
    p.SetIndex(2);
    CElement element;
    ASSERT_TRUE(p.ToXml(&element, false));
    EXPECT_STREQ(element.getAttributeValue(A_STOTYPE), "PS_DBL");
    EXPECT_STREQ(element.getAttributeValue(A_PARNAME), "PN_SIZ");
    EXPECT_STREQ(element.getAttributeValue(A_DBLVAL), "2.500000");
    EXPECT_STREQ(element.getAttributeValue(A_PARTYPE), "PT_DIST");
    EXPECT_STREQ(element.getAttributeValue(A_UNITS), "PU_M");
    EXPECT_STREQ(element.getAttributeValue(A_MULT), "PM_KILO");
    EXPECT_STREQ(element.getAttributeValue(A_INDEX), "2");
    EXPECT_STREQ(element.getAttributeValue(A_CAPT), "size = 2.5 km");
    // The value is edited from a list of the size numbers; the rest is fixed.
    Attribute* value = element.findAttributep(A_DBLVAL);
    ASSERT_NE(value, nullptr);
    EXPECT_TRUE(value->getEdit());
    EXPECT_TRUE(value->getDropBox());
    ASSERT_TRUE(value->HasOptions());
    EXPECT_EQ(value->GetOptions()->size(), 10u);
    EXPECT_FALSE(element.findAttributep(A_PARNAME)->getEdit());
    EXPECT_FALSE(element.findAttributep(A_NAME)->getEdit());
    // Saving twice leaves the element as it was; saving without them drops the extras.
    const int attributes = element.attributeCount();
    ASSERT_TRUE(p.ToXml(&element, false));
    EXPECT_EQ(element.attributeCount(), attributes);
    p.setMult(PM_NON);
    p.setUnits(PU_NON);
    p.SetIndex(-1);
    ASSERT_TRUE(p.ToXml(&element, false));
    Parameter loaded;
    ASSERT_TRUE(loaded.FromXml(&element));
    EXPECT_EQ(loaded.getMult(), PM_NON);
    EXPECT_EQ(loaded.getUnits(), PU_NON);
    EXPECT_EQ(loaded.GetIndex(), -1);
    EXPECT_TRUE(loaded.testValue(2.5));

    Parameter plain;
    plain.setValue(7);
    CElement bare;
    ASSERT_TRUE(plain.ToXml(&bare, false));
    EXPECT_FALSE(bare.hasAttribute(A_UNITS));
    EXPECT_FALSE(bare.hasAttribute(A_MULT));
    EXPECT_FALSE(bare.hasAttribute(A_INDEX));
    EXPECT_TRUE(bare.findAttributep(A_INTVAL)->getText());

    Parameter file;
    file.setParName(PN_FNAM);
    file.setValue("a/b");
    CElement chooser;
    ASSERT_TRUE(file.ToXml(&chooser, false));
    EXPECT_TRUE(chooser.findAttributep(A_STRVAL)->getFilenameChooser());
}

TEST(ParameterXmlTest, UnknownEnumeratedTextLoadsAsString) {
    CElement element;
    element.setAttribute(A_STOTYPE, std::string("PS_EVA"));
    element.setAttribute(A_PARNAME, std::string("PN_RDET"));
    element.setAttribute(A_VAL, std::string("extreme"));
    Parameter p;
    ASSERT_TRUE(p.FromXml(&element));
    EXPECT_EQ(p.getName(), PN_RDET);
    EXPECT_EQ(p.getStoreType(), PS_STR);
    EXPECT_STREQ(p.getValue(), "extreme");

    // A text of the table outside the name's limits is unknown too.
    element.setAttribute(A_VAL, std::string("purple"));
    Parameter outside;
    ASSERT_TRUE(outside.FromXml(&element));
    EXPECT_EQ(outside.getStoreType(), PS_STR);

    element.setAttribute(A_STOTYPE, std::string("PS_ENU"));
    element.setAttribute(A_PARNAME, std::string("PN_SIZ"));
    element.setAttribute(A_NUM, std::string("3000"));
    Parameter number;
    ASSERT_TRUE(number.FromXml(&element));
    EXPECT_EQ(number.getStoreType(), PS_STR);
    EXPECT_STREQ(number.getValue(), "3000");
}

TEST(ParameterXmlTest, BadTextsLeaveFieldsAlone) {
    CElement element;
    element.setAttribute(A_STOTYPE, std::string("PS_NOPE"));
    element.setAttribute(A_PARNAME, std::string("PN_NOPE"));
    element.setAttribute(A_PARTYPE, std::string("PT_NOPE"));
    element.setAttribute(A_UNITS, std::string(""));
    element.setAttribute(A_MULT, std::string("PM_NOPE"));
    Parameter p;
    p.setParName(PN_SIZ);
    p.setValue(1.25);
    p.setUnits(PU_M);
    p.setMult(PM_MILLI);
    ASSERT_TRUE(p.FromXml(&element));
    EXPECT_EQ(p.getStoreType(), PS_DBL);
    EXPECT_EQ(p.getName(), PN_SIZ);
    EXPECT_EQ(p.getDesc()->type, PT_DIST);
    EXPECT_EQ(p.getUnits(), PU_M);
    EXPECT_EQ(p.getMult(), PM_MILLI);

    // An empty enumerated text leaves the value as it was.
    CElement empty;
    empty.setAttribute(A_STOTYPE, std::string("PS_EVA"));
    empty.setAttribute(A_VAL, std::string(""));
    Parameter v;
    v.setParName(PN_RDET);
    v.setValue(static_cast<eParamValue>(40));
    ASSERT_TRUE(v.FromXml(&empty));
    EXPECT_TRUE(v.testValue(static_cast<eParamValue>(40)));

    EXPECT_FALSE(p.FromXml(nullptr));
    EXPECT_FALSE(p.ToXml(nullptr, false));
}
