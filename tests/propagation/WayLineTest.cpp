#include <gtest/gtest.h>

#include "documents/CElement.h"
#include "geometry/Coordinates.h"
#include "propagation/WayLine.h"

TEST(WayLine, APathOfPointsWithPositionsAlongIt) {
    WayLine way;
    way.Initialize();
    Coordinates at(7, 7, 7);
    EXPECT_FALSE(way.GetPointAtDistance(1.0, at));
    way.AddPoint(Coordinates(0, 0, 0));
    way.AddPoint(Coordinates(3, 4, 0));
    way.AddPoint(Coordinates(3, 4, 2));
    EXPECT_DOUBLE_EQ(way.GetLength(), 7.0);
    ASSERT_TRUE(way.GetPointAtDistance(2.5, at));
    EXPECT_DOUBLE_EQ(at.Get(0) + at.Get(1), 1.5 + 2.0);
    ASSERT_TRUE(way.GetPointAtDistance(99.0, at));  // held to the end
    EXPECT_DOUBLE_EQ(at.Get(2), 2.0);

    // A load replaces the points; the standard children are no points of the path.
    CElement saved;
    ASSERT_TRUE(way.ToXml(&saved, false));
    WayLine loaded;
    loaded.Initialize();
    loaded.AddPoint(Coordinates(9, 9, 9));
    ASSERT_TRUE(loaded.FromXml(&saved));
    EXPECT_EQ(loaded.GetPoints().size(), 3u);
}
