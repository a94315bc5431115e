#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <string>

#include "documents/Attribute.h"

namespace {

TEST(AttributeTest, FormsDeriveFromTheMaster) {
    Attribute value(A_DBLVAL, 1.5);
    EXPECT_STREQ(value.getValue(), "1.500000");
    EXPECT_EQ(value.getDouble(), 1.5);
    EXPECT_EQ(value.getInt(), 1);
    bool truth = false;
    value.get(truth);
    EXPECT_TRUE(truth);

    Attribute tiny(A_DBLVAL, 1e-7);
    EXPECT_STREQ(tiny.getValue(), "0.000000");
    EXPECT_EQ(tiny.getDouble(), 1e-7);

    Attribute huge(A_DBLVAL, 1e20);
    EXPECT_EQ(huge.getInt(), INT_MAX);

    Attribute flag(A_BOOLVAL, true);
    EXPECT_STREQ(flag.getValue(), "true");
    EXPECT_EQ(flag.getInt(), 1);
    EXPECT_STREQ(Attribute(A_BOOLVAL, false).getValue(), "false");

    EXPECT_STREQ(Attribute(A_FLTVAL, 0.25f).getValue(), "0.250000");

    Attribute text(A_STRVAL, "true");
    EXPECT_EQ(text.getInt(), 0);
    text.get(truth);
    EXPECT_TRUE(truth);
    Attribute number(A_STRVAL, std::string("2.75xyz"));
    EXPECT_EQ(number.getDouble(), 2.75);
    EXPECT_EQ(number.getInt(), 2);
    number.get(truth);
    EXPECT_FALSE(truth);
}

TEST(AttributeTest, SetReplacesMasterAndForgetsDerivedForms) {
    Attribute value(A_VAL, 1.5);
    EXPECT_STREQ(value.getValue(), "1.500000");
    value.set(A_INTVAL, 3);
    EXPECT_EQ(value.getNameId(), A_INTVAL);
    EXPECT_EQ(value.getStoreType(), AST_INT);
    EXPECT_FALSE(value.getHasString());
    EXPECT_STREQ(value.getValue(), "3");
    EXPECT_EQ(value.getDouble(), 3.0);

    value.set(A_STRVAL, static_cast<const char*>(nullptr));
    EXPECT_STREQ(value.getValue(), "");
    EXPECT_EQ(value.getInt(), 0);

    const char* text = nullptr;
    value.set(A_X, 0.5f);
    value.get(text);
    EXPECT_STREQ(text, "0.500000");
    EXPECT_TRUE(value.testValue(0.5));
    EXPECT_TRUE(value.testValue("0.500000"));
    EXPECT_FALSE(value.testValue(static_cast<const char*>(nullptr)));
}

TEST(AttributeTest, EqualToComparesInItsOwnStoreType) {
    Attribute stored(A_DBLVAL, 1.5);
    Attribute loaded(A_DBLVAL, "1.500000");
    EXPECT_TRUE(stored.equalTo(&loaded));
    EXPECT_TRUE(loaded.equalTo(&stored));

    Attribute small(A_DBLVAL, 1e-7);
    Attribute smallLoaded(A_DBLVAL, "0.000000");
    EXPECT_FALSE(small.equalTo(&smallLoaded));
    EXPECT_TRUE(smallLoaded.equalTo(&small));

    Attribute otherId(A_FLTVAL, 1.5);
    EXPECT_FALSE(stored.equalTo(&otherId));
    EXPECT_FALSE(stored.equalTo(nullptr));

    Attribute flag(A_BOOLVAL, true);
    Attribute flagText(A_BOOLVAL, "true");
    EXPECT_TRUE(flag.equalTo(&flagText));
    Attribute flagOne(A_BOOLVAL, "1");
    EXPECT_FALSE(flag.equalTo(&flagOne));
}

TEST(AttributeTest, OptionsAndHintsAreOwnedAndCopied) {
    Attribute choice(A_VAL, "glass");
    EXPECT_FALSE(choice.HasOptions());
    EXPECT_EQ(choice.GetOptions(), nullptr);
    EXPECT_TRUE(choice.AddOption("glass"));
    EXPECT_TRUE(choice.AddOption("brick"));
    EXPECT_FALSE(choice.AddOption("glass"));
    ASSERT_TRUE(choice.HasOptions());
    EXPECT_EQ(*choice.GetOptions(), (std::vector<std::string>{"glass", "brick"}));

    choice.setDisplayEditTextDropBox(false, true, false, true);
    choice.setFilenameChooser(true);

    Attribute copy(choice);
    choice.ClearOptions();
    EXPECT_FALSE(choice.HasOptions());
    ASSERT_TRUE(copy.HasOptions());
    EXPECT_EQ(copy.GetOptions()->size(), 2u);
    EXPECT_FALSE(copy.getDisplay());
    EXPECT_TRUE(copy.getEdit() && copy.getDropBox() && copy.getFilenameChooser());
    EXPECT_TRUE(copy.equalTo(&choice));

    copy.SetOptions({"wood"});
    choice = copy;
    EXPECT_EQ(*choice.GetOptions(), std::vector<std::string>{"wood"});
}

TEST(AttributeTest, NameTablesHoldEveryIdOnce) {
    Attribute first;
    EXPECT_TRUE(Attribute::nameStringsSet);
    EXPECT_EQ(Attribute::attGUIStrings[A_PNTTHICK], "pointhickness");

    std::set<std::string> files, names;
    for (int id = attrNameIdFirst; id <= attrNameIdLast; id++) {
        EXPECT_EQ(Attribute::FileString(id).rfind("A_", 0), 0u) << id;
        files.insert(Attribute::FileString(id));
        names.insert(Attribute::GUIString(id));
        eAttrNameId found = A_UNK;
        EXPECT_TRUE(Attribute::FileStringToId(Attribute::FileString(id), found));
        EXPECT_EQ(found, id);
    }
    EXPECT_EQ(files.size(), 49u);
    EXPECT_EQ(names.size(), 49u);
    EXPECT_EQ(Attribute::FileString(0), "");
    EXPECT_EQ(Attribute::GUIString(50), "");

    eAttrNameId found = A_UNK;
    EXPECT_TRUE(Attribute::GUIStringToId("SimObjectID", found));
    EXPECT_EQ(found, A_SIMOBJID);
    EXPECT_FALSE(Attribute::FileStringToId("A_NOSUCH", found));
    EXPECT_FALSE(Attribute::GUIStringToId("A_NAME", found));

    Attribute::ClearStaticSpace();
    EXPECT_FALSE(Attribute::nameStringsSet);
    EXPECT_EQ(Attribute::attFILEStrings[A_NAME], "");
    Attribute refill(A_NAME);
    EXPECT_EQ(Attribute::attFILEStrings[A_NAME], "A_NAME");
}

}  // namespace
