#include <gtest/gtest.h>

#include "framework/SharedValue.h"

// Get() reads value > 0, so a negative count reads false.
TEST(SharedValue, FlagReadsPositiveValuesOnly) {
    SharedValue value(true);
    EXPECT_TRUE(value.Get());
    value.Set(-3);
    EXPECT_FALSE(value.Get());
    EXPECT_EQ(value.GetInt(), -3);
    value.Inc(5);
    EXPECT_TRUE(value.Get());
    value.Dec(2);
    EXPECT_FALSE(value.Get());
    EXPECT_EQ(value.GetInt(), 0);
}
