#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "documents/Document.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Layout.h"
#include "geometry/Rotation.h"
#include "geometry/Transformation.h"
#include "geometry/Translation.h"
#include "support/SampleNode.h"

namespace {

constexpr double PI = 3.141592653589793;
// The turn's degree factor: 3.1412459 / 180.
constexpr double TURN = 0.01745136611111111;

// Restores the simulation time when a test is done with it.
class TimeGuard {
public:
    TimeGuard() = default;
    TimeGuard(const TimeGuard&) = delete;
    TimeGuard& operator=(const TimeGuard&) = delete;
    ~TimeGuard() { SimObject::SetTime(0.0); }
};

std::unique_ptr<Translation> MakeTranslation(double x, double y, double z, double speed = 0.0) {
    auto t = std::make_unique<Translation>(3);
    t->Initialize();
    t->GetCoord()->SetValues(x, y, z);
    t->SetSpeed(speed);
    t->buildTrans();
    return t;
}

std::unique_ptr<Rotation> MakeRotation(double degrees, double ax, double ay, double az,
                                       double px = 0.0, double py = 0.0, double pz = 0.0) {
    auto r = std::make_unique<Rotation>(3);
    r->Initialize();
    r->GetDir()->SetValues(ax, ay, az);
    r->GetCoord()->SetValues(px, py, pz);
    r->SetStartAngle(degrees);
    r->buildTrans();
    return r;
}

// Initialises t with first applied, then second.
template <typename A, typename B>
void Compose(Transformation& t, A& first, B& second) {
    t.Initialize();
    t.Add(first);
    t.Add(second);
}

void ExpectPoint(Coordinates& p, double x, double y, double z, double tolerance = 1e-12) {
    EXPECT_NEAR(p.Get(0), x, tolerance);
    EXPECT_NEAR(p.Get(1), y, tolerance);
    EXPECT_NEAR(p.Get(2), z, tolerance);
}

}  // namespace

TEST(Translation, MovesByItsVectorAndGrowsWithSpeed) {
    TimeGuard time;
    auto still = MakeTranslation(1.0, -2.0, 0.5);
    for (double t : {0.0, 3.0, 100.0}) {
        SimObject::SetTime(t);
        still->buildTrans();
        Coordinates p(10.0, 10.0, 10.0), out(3);
        still->Transform(p, out);
        ExpectPoint(out, 11.0, 8.0, 10.5);
    }

    // 2 m/s along a vector of length 5, after 2.5 s: 5 m further, so the vector doubles.
    auto moving = MakeTranslation(3.0, 4.0, 0.0, 2.0);
    SimObject::SetTime(2.5);
    moving->buildTrans();
    EXPECT_DOUBLE_EQ(moving->GetMatrix().Get(0, 3), 6.0);
    EXPECT_DOUBLE_EQ(moving->GetMatrix().Get(1, 3), 8.0);
    moving->updateDirDist();
    EXPECT_DOUBLE_EQ(moving->GetDistance(), 10.0);
    EXPECT_DOUBLE_EQ(moving->GetDir()->Get(0), 0.6);

    // A vector shorter than 1e-10 does not grow, whatever the speed.
    auto tiny = MakeTranslation(1e-11, 0.0, 0.0, 1000.0);
    tiny->buildTrans();
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            EXPECT_NEAR(tiny->GetMatrix().Get(i, j), i == j ? 1.0 : 0.0, 1e-10);
        }
    }

    Translation empty(3);
    EXPECT_FALSE(empty.buildTrans());
    EXPECT_FALSE(empty.updateDirDist());

    auto edited = MakeTranslation(0.0, 0.0, 0.0);
    Direction up(0.0, 0.0, 1.0);
    Coordinates step(1.0, 0.0, 0.0);
    edited->Add(up, 2.0);
    edited->Add(step);
    ExpectPoint(*edited->GetCoord(), 1.0, 0.0, 2.0);
    edited->Set(step);
    ExpectPoint(*edited->GetCoord(), 1.0, 0.0, 0.0);
    edited->Clear();
    EXPECT_EQ(edited->GetCoord()->GetLength(), 0.0);
    Coordinates wide(4);
    EXPECT_FALSE(edited->Add(wide));
}

TEST(Rotation, UsesTheSystemsTurnFactor) {
    TimeGuard time;
    // A half turn about z is not quite one: c = cos(3.1412459), s = sin(3.1412459).
    auto half = MakeRotation(180.0, 0.0, 0.0, 1.0);
    const MatrixTemplate<double>& m = half->GetMatrix();
    MatrixTemplate<double> copy(m);
    EXPECT_DOUBLE_EQ(copy.Get(0, 0), std::cos(180.0 * TURN));
    EXPECT_DOUBLE_EQ(copy.Get(0, 1), -std::sin(180.0 * TURN));
    EXPECT_NEAR(copy.Get(1, 0), std::sin(3.1412459), 1e-14);
    EXPECT_DOUBLE_EQ(copy.Get(2, 2), 1.0);

    // A quarter turn about the z axis through (1, 0, 0) takes (2, 0, 0) nearly to (1, 1, 0).
    auto quarter = MakeRotation(90.0, 0.0, 0.0, 1.0, 1.0, 0.0, 0.0);
    Coordinates p(2.0, 0.0, 0.0), out(3);
    quarter->Transform(p, out);
    ExpectPoint(out, 1.0 + std::cos(90.0 * TURN), std::sin(90.0 * TURN), 0.0);
    // The axis point stays where it is.
    Coordinates onAxis(1.0, 0.0, 5.0);
    quarter->Transform(&onAxis);
    ExpectPoint(onAxis, 1.0, 0.0, 5.0);

    // The angle follows the time and is kept within -180 to 180.
    auto spinning = MakeRotation(170.0, 0.0, 0.0, 1.0);
    spinning->SetAngleSpeed(10.0);
    SimObject::SetTime(3.0);
    EXPECT_DOUBLE_EQ(spinning->GetAngle(), -160.0);
    spinning->AddToStartAngle(-400.0);
    EXPECT_DOUBLE_EQ(spinning->GetAngle(), -200.0 + 360.0);
}

TEST(Transformation, ComposesInOrderAndInvertsRoundTrip) {
    // A point is turned first, then moved: (1, 0, 0) -> about (0, 1, 0) -> (10, 1, 0).
    auto turn = MakeRotation(90.0, 0.0, 0.0, 1.0);
    auto move = MakeTranslation(10.0, 0.0, 0.0);
    Transformation composed(3);
    Compose(composed, *turn, *move);
    Coordinates p(1.0, 0.0, 0.0), out(3);
    composed.Transform(p, out);
    ExpectPoint(out, 10.0 + std::cos(90.0 * TURN), std::sin(90.0 * TURN), 0.0);
    // The other order moves first: (11, 0, 0) turned about the origin.
    Transformation reversed(3);
    Compose(reversed, *move, *turn);
    reversed.Transform(p, out);
    ExpectPoint(out, 11.0 * std::cos(90.0 * TURN), 11.0 * std::sin(90.0 * TURN), 0.0);

    // Random compositions: TransformInv brings points back.
    std::mt19937 generator(3);
    std::uniform_real_distribution<double> value(-5.0, 5.0);
    for (int trial = 0; trial < 10; ++trial) {
        auto r =
            MakeRotation(value(generator) * 30.0, value(generator), value(generator),
                         value(generator), value(generator), value(generator), value(generator));
        auto t = MakeTranslation(value(generator), value(generator), value(generator));
        Transformation transformation(3);
        Compose(transformation, *r, *t);
        transformation.AddScale(2.0);
        Coordinates point(value(generator), value(generator), value(generator)), there(3), back(3);
        ASSERT_TRUE(transformation.Transform(point, there));
        ASSERT_TRUE(transformation.TransformInv(there, back));
        ExpectPoint(back, point.Get(0), point.Get(1), point.Get(2), 1e-9);
        Coordinates inPlace(point);
        transformation.Transform(inPlace);
        transformation.TransformInv(inPlace);
        ExpectPoint(inPlace, point.Get(0), point.Get(1), point.Get(2), 1e-9);

        // A direction is turned (and scaled back to unit length), never moved.
        Direction d(value(generator), value(generator), value(generator)), turned(3), restored(3);
        transformation.Transform(d, turned);
        EXPECT_NEAR(turned.GetLength(), 1.0, 1e-12);
        transformation.TransformInv(turned, restored);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(restored.Get(i), d.Get(i), 1e-9);
    }

    // A mirror has a negative determinant: there is no inverse, and the output stays.
    Transformation mirror(3);
    mirror.Initialize();
    mirror.AddScale(-1.0);
    Coordinates q(1.0, 2.0, 3.0), untouched(7.0, 7.0, 7.0);
    EXPECT_FALSE(mirror.TransformInv(q, untouched));
    ExpectPoint(untouched, 7.0, 7.0, 7.0);
}

TEST(Transformation, PlainDoublesAndRendererMatrices) {
    auto turn = MakeRotation(90.0, 0.0, 0.0, 1.0);
    auto move = MakeTranslation(0.0, 0.0, 5.0);
    Transformation transformation(3);
    Compose(transformation, *turn, *move);
    double x = 1.0, y = 0.0, z = 0.0, dx = 2.0, dy = 0.0, dz = 0.0;
    transformation.Transform(x, y, z, dx, dy, dz);
    EXPECT_NEAR(x, std::cos(90.0 * TURN), 1e-12);
    EXPECT_NEAR(z, 5.0, 1e-12);
    EXPECT_NEAR(dx, std::cos(90.0 * TURN), 1e-12);
    EXPECT_NEAR(dy, std::sin(90.0 * TURN), 1e-12);
    EXPECT_NEAR(dz, 0.0, 1e-12);

    float matrix[16];
    transformation.ToMatrix(matrix);
    EXPECT_FLOAT_EQ(matrix[14], 5.0f);  // the move is the last row
    Transformation copy(3);
    copy.FromMatrix(matrix);
    double a = 0.0, b = 1.0, c = 0.0;
    copy.Transform(a, b, c);
    EXPECT_NEAR(a, -std::sin(90.0 * TURN), 1e-6);
    EXPECT_NEAR(c, 5.0, 1e-6);

    // Longitude and latitude around the centre of the limits become metres from it.
    Transformation gps(3);
    gps.getTransGPS2XYZ(10.0f, 11.0f, 50.0f, 51.0f);
    double lon = 10.5, lat = 50.5, h = 7.0;
    gps.Transform(lon, lat, h);
    EXPECT_NEAR(lon, 0.0, 1e-6);
    EXPECT_NEAR(lat, 0.0, 1e-6);
    EXPECT_EQ(h, 7.0);
    double north = 10.5, oneUp = 51.5, height = 0.0;
    gps.Transform(north, oneUp, height);
    EXPECT_NEAR(oneUp, 111319.49, 1e-3);
}

TEST(Layout, LocalAndGlobalTransformations) {
    auto root = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "root"));
    SampleNode* child = SampleNode::MakeUnder(root.get(), "child");

    // No layout: no transformations.
    EXPECT_EQ(child->GetGlobalTransformation(), nullptr);
    EXPECT_EQ(child->GetLocalTransformation(), nullptr);
    EXPECT_EQ(child->GetUpperTransformation(), nullptr);
    EXPECT_EQ(child->GetLayoutPositionCount(), 1);
    EXPECT_FALSE(child->SetLayoutPosition(0));

    root->InitLayout();
    root->GetLayout()->InitTranslation();
    Coordinates rootMove(100.0, 0.0, 0.0);
    root->GetLayout()->setToCentre(rootMove);
    child->InitLayout();
    Coordinates axisPoint(0.0, 0.0, 0.0);
    Direction zAxis(0.0, 0.0, 1.0);
    child->GetLayout()->InitRotation(&axisPoint, &zAxis);
    child->GetLayout()->GetRotation()->SetStartAngle(90.0);
    Coordinates childMove(0.0, 1.0, 0.0);
    child->GetLayout()->setToCentre(childMove);

    // Local: turned, then moved. Global: and then carried by the root.
    Coordinates p(1.0, 0.0, 0.0), local(3), global(3);
    child->GetLocalTransformation()->Transform(p, local);
    ExpectPoint(local, std::cos(90.0 * TURN), 1.0 + std::sin(90.0 * TURN), 0.0);
    child->GetGlobalTransformation()->Transform(p, global);
    ExpectPoint(global, 100.0 + std::cos(90.0 * TURN), 1.0 + std::sin(90.0 * TURN), 0.0);
    EXPECT_TRUE(root->GetTransformationApplied());
    EXPECT_EQ(child->GetUpperTransformation(), root->GetGlobalTransformation());

    // Moving the parent changes the global transformation, not the local one.
    Coordinates elsewhere(0.0, 0.0, -50.0);
    root->GetLayout()->setToCentre(elsewhere);
    child->GetLocalTransformation()->Transform(p, local);
    ExpectPoint(local, std::cos(90.0 * TURN), 1.0 + std::sin(90.0 * TURN), 0.0);
    child->GetGlobalTransformation()->Transform(p, global);
    ExpectPoint(global, std::cos(90.0 * TURN), 1.0 + std::sin(90.0 * TURN), -50.0);

    Coordinates centre(3);
    child->GetLayout()->GetCentre(centre);
    ExpectPoint(centre, 0.0, 1.0, -50.0);

    // Scale acts first, in the owner's own frame.
    child->GetLayout()->SetSize(2.0);
    child->GetLocalTransformation()->Transform(p, local);
    ExpectPoint(local, 2.0 * std::cos(90.0 * TURN), 1.0 + 2.0 * std::sin(90.0 * TURN), 0.0);
}

TEST(Layout, SavesAndLoadsItsParts) {
    TimeGuard time;
    auto owner = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "owner"));
    owner->InitLayout();
    Layout* layout = owner->GetLayout();
    EXPECT_TRUE(layout->TestName("Layout"));
    layout->InitTranslation();
    Coordinates move(1.0, 2.0, 3.0);
    layout->setToCentre(move);
    layout->GetTranslation()->SetSpeed(0.5);
    Coordinates axisPoint(0.0, 0.0, 0.0);
    Direction axis(0.0, 1.0, 0.0);
    layout->InitRotation(&axisPoint, &axis);
    layout->GetRotation()->SetStartAngle(30.0);
    layout->GetRotation()->SetAngleSpeed(2.0);
    layout->InitArray();
    EXPECT_EQ(owner->GetLayoutPositionCount(), 1);

    Document element;
    ASSERT_TRUE(layout->ToXml(&element, false));
    std::string text;
    element.writeToString(text);
    EXPECT_NE(text.find("A_SP=\"0.500000\""), std::string::npos);
    EXPECT_NE(text.find("A_ANG=\"30.000000\""), std::string::npos);
    EXPECT_NE(text.find("A_ANGSP=\"2.000000\""), std::string::npos);

    Layout loaded(3);
    loaded.Initialize();
    ASSERT_TRUE(loaded.FromXml(&element));
    ASSERT_NE(loaded.GetTranslation(), nullptr);
    ASSERT_NE(loaded.GetRotation(), nullptr);
    ASSERT_NE(loaded.GetArray(), nullptr);

    // Both give the same transformation at a later time.
    SimObject::SetTime(4.0);
    layout->Update();
    loaded.Update();
    Coordinates p(1.0, 1.0, 1.0), a(3), b(3);
    layout->GetGlobalTransformation().Transform(p, a);
    loaded.GetGlobalTransformation().Transform(p, b);
    ExpectPoint(b, a.Get(0), a.Get(1), a.Get(2), 1e-9);
}

namespace {

// Stands for an optic element: counts the rebuilds of its children.
class OpticSpy : public SimObject {
public:
    OpticSpy() { objTypeStr = "OpticElement"; }
    bool QuickSetToChildren(bool) override {
        ++rebuilds;
        return true;
    }
    int rebuilds = 0;
};

}  // namespace

TEST(Layout, ApplyTransformationRebuildsAnOpticElementWithNewPositions) {
    OpticSpy optic;
    optic.Initialize();
    optic.InitLayout();
    Layout* layout = optic.GetLayout();
    layout->ApplyTransformation(true);
    EXPECT_EQ(optic.rebuilds, 0);  // no array
    layout->InitArray();
    EXPECT_TRUE(layout->GetArray()->PositionsChanged());
    layout->ApplyTransformation(true);
    EXPECT_EQ(optic.rebuilds, 1);
    layout->GetArray()->SetPositionsChanged(false);
    layout->ApplyTransformation(true);
    EXPECT_EQ(optic.rebuilds, 1);

    auto other = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "plain"));
    other->InitLayout();
    other->GetLayout()->InitArray();
    EXPECT_TRUE(other->GetLayout()->ApplyTransformation(true));
}

TEST(Array, ReadsItsParametersOncePerChange) {
    Array array;
    array.Initialize();
    array.SetParameterValue(PN_ARRTYP, static_cast<eParamValue>(43));  // "point"
    array.SetParameterValue(PN_ARRSHA, static_cast<eParamValue>(76));  // "circleFull"
    array.SetParameterValue(PN_CNT, 100);
    array.SetParameterValue(PN_RAYGAP, 10.0);
    array.SetParameterValue(PN_ANG, 360.0);
    array.SetParameterValue(PN_SIZ, 2.0);
    EXPECT_TRUE(array.checkParams());
    EXPECT_FALSE(array.checkParams());
    EXPECT_EQ(array.GetArrayType(), 43);
    EXPECT_EQ(array.GetArrayShape(), 76);
    EXPECT_EQ(array.GetCount(), 100);
    EXPECT_DOUBLE_EQ(array.GetRayGap(), 10.0 * PI / 180.0);
    EXPECT_DOUBLE_EQ(array.GetSize(), 2.0);
    EXPECT_TRUE(array.PositionsChanged());
    EXPECT_EQ(array.GetPositionCount(), 1);

    array.SetParameterValue(PN_CNT, 12);
    EXPECT_TRUE(array.checkParams());
    EXPECT_EQ(array.GetCount(), 12);
}

// An object counts and visits the positions of its layout's array; a child with a layout
// made under it starts at the array's first position.
TEST(Layout, ArrayPositionsPlaceObjects) {
    auto owner = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "owner"));
    owner->InitLayout();
    owner->GetLayout()->InitArray();
    Array* array = owner->GetLayout()->GetArray();
    array->SetParameterValue(PN_ARRTYP, PV_PLANE);
    array->SetParameterValue(PN_ARRSHA, PV_LINE);
    array->SetParameterValue(PN_SIZ, 4.0);
    array->SetParameterValue(PN_CNT, 3);
    EXPECT_EQ(owner->GetLayoutPositionCount(), 3);

    Coordinates centre(3);
    ASSERT_TRUE(owner->SetLayoutPosition(2));
    owner->GetLayout()->GetCentre(centre);
    EXPECT_NEAR(centre.Get(0), 2.0, 1e-12);
    EXPECT_FALSE(owner->SetLayoutPosition(3));

    auto* child = new SampleNode();
    child->SetHasLayout(true);
    child->SetParent(owner.get());
    child->Initialize();
    ASSERT_NE(child->GetLayout(), nullptr);
    Coordinates origin(3), placed(3);
    child->GetLayout()->GetLocalTransformation().Transform(origin, placed);
    EXPECT_NEAR(placed.Get(0), -2.0, 1e-12);

    // Without a layout of its own a child stays where its parent puts it.
    SampleNode* plain = SampleNode::MakeUnder(owner.get(), "plain");
    EXPECT_EQ(plain->GetLayout(), nullptr);
}
