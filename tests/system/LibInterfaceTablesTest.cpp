#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "system/LibInterface.h"

TEST(LibInterfaceTables, ChannelNumbersMapIntoTheValueRunsOfEachBand) {
    LibInterface facade;
    struct Case {
        int channel;
        int value;
    };
    for (Case c : {Case{1, 285}, Case{14, 298}, Case{15, 301}, Case{79, 365}, Case{80, 368},
                   Case{133, 421}, Case{134, 424}, Case{213, 503}, Case{214, 506}, Case{221, 513},
                   Case{0, 0}, Case{222, 0}, Case{-3, 0}}) {
        EXPECT_EQ(LibInterface::GetChannelValue(c.channel), c.value) << c.channel;
    }
}

TEST(LibInterfaceTables, MediumNumbersNameTheMediaAfterVacuum) {
    std::vector<std::string> names;
    {
        LibInterface first;
        LibInterface second;
        second.GetMaterialNames(names);
    }
    ASSERT_EQ(names.size(), 13u);
    EXPECT_EQ(LibInterface::GetMediumName(0), "");
    EXPECT_EQ(LibInterface::GetMediumName(13), "");
    for (int medium = 1; medium <= 12; ++medium) {
        EXPECT_EQ(LibInterface::GetMediumName(medium), names[medium]) << medium;
    }
    EXPECT_EQ(LibInterface::GetMediumName(9), "Metal (ITU)");
}
