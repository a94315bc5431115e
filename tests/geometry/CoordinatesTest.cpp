#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "documents/CElement.h"
#include "documents/Document.h"
#include "geometry/CoordQUICK.h"
#include "geometry/Coordinates.h"
#include "geometry/DirQUICK.h"
#include "geometry/Direction.h"
#include "geometry/Layout.h"
#include "geometry/Translation.h"
#include "support/SampleNode.h"

namespace {

void ExpectPoint(Coordinates& p, double x, double y, double z) {
    EXPECT_DOUBLE_EQ(p.Get(0), x);
    EXPECT_DOUBLE_EQ(p.Get(1), y);
    EXPECT_DOUBLE_EQ(p.Get(2), z);
}

}  // namespace

TEST(Coordinates, ConstructorsGiveColumns) {
    EXPECT_EQ(Coordinates(4).GetDim(2), 1);
    EXPECT_EQ(Coordinates(1.0, 2.0, 3.0, 4.0).Get(3), 4.0);
    EXPECT_EQ(Coordinates(CoordQUICK(7, 8, 9)).Get(2), 9.0);
    MatrixTemplate<double> matrix(3, 1);
    matrix.SetValues(5.0, 6.0, 7.0);
    EXPECT_EQ(Coordinates(matrix).GetTypeStr(), "Coordinates");
}

TEST(Direction, IsNormalisedOnRead) {
    Direction d(3);
    d.SetValues(3.0, 0.0, 4.0);
    EXPECT_DOUBLE_EQ(d.Get(0), 0.6);
    EXPECT_DOUBLE_EQ(d.Get(1), 0.0);
    EXPECT_DOUBLE_EQ(d.Get(2), 0.8);
    // A later write is rescaled on the next read, not before.
    d.SetValue(1, 10.0);
    EXPECT_EQ(d.Get(1, true), 10.0);
    EXPECT_DOUBLE_EQ(d.GetLength(), 1.0);
    EXPECT_LT(d.Get(1, true), 1.0);

    EXPECT_DOUBLE_EQ(Direction(0.0, 5.0).Get(1), 1.0);
    EXPECT_DOUBLE_EQ(Direction(2.0, 0.0, 0.0, 0.0).Get(0), 1.0);
    EXPECT_DOUBLE_EQ(Direction(DirQUICK(0, 0, -3)).Get(2), -1.0);
    Coordinates c(0.0, 3.0, 4.0);
    Direction copy(c);
    EXPECT_DOUBLE_EQ(copy.Get(1), 0.6);
    copy.Copy(DirQUICK(1, 1, 0));
    EXPECT_DOUBLE_EQ(copy.Get(0), std::sqrt(0.5));

    // A zero direction stays zero rather than turning into NaN.
    Direction zero(3);
    EXPECT_EQ(zero.Get(0), 0.0);
    EXPECT_FALSE(zero.Normalise());
}

TEST(Coordinates, SaveAndLoadThroughAnElement) {
    Coordinates point(1.25, -2.5, 3.0);
    point.Initialize();
    point.SetName("centre");
    Document element;
    ASSERT_TRUE(point.ToXml(&element, false));
    EXPECT_EQ(element.getName(), "Coordinates");
    std::string first;
    element.writeToString(first);
    EXPECT_NE(first.find("PN_DIM1"), std::string::npos);

    Coordinates loaded(3);
    loaded.Initialize();
    ASSERT_TRUE(loaded.FromXml(&element));
    EXPECT_TRUE(loaded.TestName("centre"));
    EXPECT_TRUE(loaded.CheckEq(static_cast<SimObject*>(&point)));

    // A new value is updated in place.
    point.SetValue(2, 4.0);
    point.ToXml(&element, false);
    loaded.FromXml(&element);
    EXPECT_EQ(loaded.Get(2), 4.0);
    EXPECT_EQ(loaded.GetCount(PN_VAL), 3);

    // A direction compares unequal by its class name, and loading it normalises.
    Direction direction(3);
    direction.Initialize();
    EXPECT_FALSE(point.CheckEq(static_cast<SimObject*>(&direction)));
    Coordinates far(0.0, 3.0, 4.0);
    far.Initialize();
    Document farElement;
    far.ToXml(&farElement, false);
    ASSERT_TRUE(direction.FromXml(&farElement));
    EXPECT_DOUBLE_EQ(direction.Get(1, true), 0.6);
    EXPECT_DOUBLE_EQ(direction.Get(2, true), 0.8);

    Direction same(3);
    same.Initialize();
    direction.ToXml(&farElement, false);
    same.FromXml(&farElement);
    EXPECT_TRUE(same.CheckEq(&direction));
}

TEST(Coordinates, ApplyTransformationNeedsALayoutAbove) {
    auto owner = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "owner"));
    auto* point = dynamic_cast<Coordinates*>(owner->GetChildNamed("centrePoint"));
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(owner->GetGlobalTransformation(), nullptr);
    EXPECT_FALSE(point->ApplyTransformation(true));

    owner->InitLayout();
    owner->GetLayout()->InitTranslation();
    Coordinates move(1.0, 2.0, 3.0);
    owner->GetLayout()->setToCentre(move);
    ASSERT_TRUE(point->ApplyTransformation(true));
    EXPECT_DOUBLE_EQ(point->Get(0), 1.0);
    EXPECT_DOUBLE_EQ(point->Get(2), 3.0);
    ASSERT_TRUE(point->ApplyTransformation(false));
    EXPECT_NEAR(point->Get(0), 0.0, 1e-12);
    EXPECT_NEAR(point->Get(2), 0.0, 1e-12);

    // A direction turns but does not move.
    auto* heading = dynamic_cast<Direction*>(owner->GetChildNamed("heading"));
    ASSERT_NE(heading, nullptr);
    heading->SetValues(0.0, 0.0, 2.0);
    ASSERT_TRUE(heading->ApplyTransformation(true));
    EXPECT_DOUBLE_EQ(heading->Get(2), 1.0);
    EXPECT_NEAR(heading->Get(0), 0.0, 1e-12);
}

TEST(Coordinates, InteractiveMoves) {
    Coordinates point(1.0, 2.0, 3.0);
    EXPECT_TRUE(point.ReceiveAction("movex", 0.5, 9.0));
    EXPECT_TRUE(point.ReceiveAction("movey", 9.0, -1.0));
    EXPECT_TRUE(point.ReceiveAction("movexy", 1.0, 1.0));
    ExpectPoint(point, 2.5, 2.0, 3.0);
    EXPECT_TRUE(point.ReceiveAction("scale", 2.0, 0.0));
    ExpectPoint(point, 5.0, 4.0, 6.0);
    EXPECT_FALSE(point.ReceiveAction("spin", 1.0, 1.0));

    Direction d(1.0, 0.0, 0.0);
    EXPECT_TRUE(d.ReceiveAction("movey", 0.0, 1.0));
    EXPECT_DOUBLE_EQ(d.Get(1), std::sqrt(0.5));
}

TEST(CoordQUICK, FromAndWithMatrices) {
    Coordinates m(1.0, 2.0, 3.0);
    CoordQUICK p;
    p.Copy(m);
    EXPECT_EQ(p.dim, 3);
    EXPECT_EQ(p.data[2], 3.0);
    p += m;
    EXPECT_EQ(p.data[1], 4.0);
    p -= m;
    EXPECT_EQ(p.data[1], 2.0);
    EXPECT_DOUBLE_EQ(p.diff(m), 0.0);
    Coordinates four(1.0, 2.0, 3.0, 2.0);
    EXPECT_DOUBLE_EQ(p.diff(four), 2.0);  // the fourth element counts
    Coordinates zero(0.0, 0.0, 0.0);
    EXPECT_DOUBLE_EQ(CoordQUICK(0, 0, 1).DotDiff(m, zero), 3.0);

    DirQUICK d;
    d.Copy(m);
    EXPECT_DOUBLE_EQ(d.GetLength(), 1.0);
    EXPECT_DOUBLE_EQ(d.data[2], 3.0 / std::sqrt(14.0));
}
